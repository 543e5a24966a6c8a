#pragma once

#include <functional>

#include "platform/SpaceRowView.h"

namespace vembrix {

class VembrixSpaceRowView;

/// The SpaceRowView of this platform, as other faces use it.
class NativeSpaceRowView : public SpaceRowView {
 public:
  /// The row's interface to the menu that holds it.
  struct Menu {
    std::function<void()> close;
    /// Called before the row is edited: ends the editing of any other and gives the menu the
    /// keyboard.
    std::function<void()> prepareEditing;
  };

  /// Creates the row's widget, without a parent. To be called once; the caller must delete the
  /// widget before this object.
  virtual VembrixSpaceRowView* makeWidget() = 0;
  virtual void setMenu(Menu menu) = 0;
  /// Null before makeWidget().
  [[nodiscard]] virtual VembrixSpaceRowView* widget() const = 0;
};

}  // namespace vembrix
