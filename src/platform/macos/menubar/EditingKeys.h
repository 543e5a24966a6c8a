#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/Arc.h"

namespace vembrix {

/// Whether the key press was one of the usual commands of an Edit menu (cut, copy,
/// paste, select all, undo, redo, emoji), and was carried out on the text.
bool performEditCommand(NSEvent* event, NSTextView* editor);

}  // namespace vembrix
