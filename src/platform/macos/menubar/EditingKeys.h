#pragma once

#import <AppKit/AppKit.h>

#include "platform/SpaceRowView.h"
#include "platform/macos/Arc.h"

namespace vembrix {

/// What a key press means to a row whose name is being edited in `editor`, which
/// may be nil. A key that an input method is waiting for means nothing to the row.
RowKey rowKey(NSEvent* event, NSTextView* editor);

/// Whether the key press was one of the usual commands of an Edit menu (cut, copy,
/// paste, select all, undo, redo, emoji), and was carried out on the text.
bool performEditCommand(NSEvent* event, NSTextView* editor);

}  // namespace vembrix
