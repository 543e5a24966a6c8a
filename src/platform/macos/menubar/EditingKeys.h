#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/support/Arc.h"

namespace vembrix {

/// Performs a usual command of an Edit menu (cut, copy, paste, select all, undo, redo, emoji) on
/// the text. Returns whether the key press was one.
bool performEditCommand(NSEvent* event, NSTextView* editor);

}  // namespace vembrix
