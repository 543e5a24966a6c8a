#pragma once

#import <AppKit/AppKit.h>

#include <string>

#include "platform/SpaceRowView.h"
#include "platform/macos/Arc.h"

namespace vembrix {

/// The views that a row is made of, besides the dot. The row's view owns them too.
struct SpaceRowParts {
  NSTextField* label;
  NSTextField* editField;
  NSButton* renameButton;
};

/// Adds a dot and the parts to an empty view, with the constraints that place them.
/// The label is shown, the edit field and the rename button are hidden.
SpaceRowParts addSpaceRowParts(NSView* row, const SpaceRowContent& content,
                               const std::string& label);

/// A field to edit a name in, as a row has it.
NSTextField* makeNameField(NSFont* font, NSString* accessibilityLabel);

}  // namespace vembrix
