#pragma once

#include <functional>

#include "platform/SpaceRowView.h"

namespace vembrix {

class SpaceRowWidget;

/// What every SpaceRowView of this platform is besides.
class NativeSpaceRow : public SpaceRowView {
 public:
  /// The menu that holds the row, as far as the row needs it.
  struct Menu {
    std::function<void()> close;
    /// Called before the row is edited: ends the editing of any other, and gets
    /// the menu the keyboard.
    std::function<void()> prepareEditing;
  };

  /// Its widget, new and without a parent. Once; whoever takes it must delete it
  /// before this.
  virtual SpaceRowWidget* makeWidget() = 0;
  virtual void setMenu(Menu menu) = 0;
  /// Null before makeWidget().
  [[nodiscard]] virtual SpaceRowWidget* widget() const = 0;
};

}  // namespace vembrix
