#pragma once

#import <AppKit/AppKit.h>

#include <string>

#include "platform/SpaceRowView.h"
#include "platform/macos/support/Arc.h"

namespace vembrix {

/// The views of a row, besides the dot. The row's view owns them, too.
struct SpaceRowParts {
  NSTextField* label;
  NSTextField* editField;
  NSButton* renameButton;
};

/// Adds a dot and the parts, with their constraints, to an empty view. The label is visible, the
/// edit field and the rename button are hidden.
SpaceRowParts addSpaceRowParts(NSView* row, const SpaceRowContent& content,
                               const std::string& label);

/// Creates an edit field in the style of a row.
NSTextField* makeNameField(NSFont* font, NSString* accessibilityLabel);

}  // namespace vembrix
