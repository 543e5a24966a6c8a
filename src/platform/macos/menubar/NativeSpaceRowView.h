#pragma once

#import <AppKit/AppKit.h>

#include "platform/SpaceRowView.h"
#include "platform/macos/Arc.h"

namespace vembrix {

/// What every row is on macOS: for the menu that shows it.
class NativeSpaceRowView : public SpaceRowView {
 public:
  /// The item whose view is the row. Owned by this object, and by the menu as long
  /// as it holds the item.
  [[nodiscard]] virtual NSMenuItem* nativeItem() const = 0;
  /// The menu's selection is on the item, or is not.
  virtual void setHighlighted(bool isHighlighted) = 0;
  /// The row's view without its item: shows what the row shows now, and neither
  /// follows the pointer nor tells anybody anything any more. For pictures.
  [[nodiscard]] virtual NSView* detachView() = 0;
};

}  // namespace vembrix
