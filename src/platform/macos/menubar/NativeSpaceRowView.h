#pragma once

#import <AppKit/AppKit.h>

#include "platform/SpaceRowView.h"
#include "platform/macos/support/Arc.h"

namespace vembrix {

/// The SpaceRowView of this platform, as the menu that shows it uses it.
class NativeSpaceRowView : public SpaceRowView {
 public:
  /// The item whose view is the row. Owned by this object, and by the menu while it holds the item.
  [[nodiscard]] virtual NSMenuItem* nativeItem() const = 0;
  /// Sets whether the menu's selection is on the item.
  virtual void setHighlighted(bool isHighlighted) = 0;
  /// Detaches the row's view for pictures: it shows the present state and no longer reacts to input
  /// or calls the handler.
  [[nodiscard]] virtual NSView* detachView() = 0;
};

}  // namespace vembrix
