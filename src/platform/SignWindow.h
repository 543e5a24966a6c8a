#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/Geometry.h"
#include "platform/MainQueue.h"
#include "platform/WindowServer.h"
#include "platform/WindowTraits.h"

namespace vembrix {

/// The colours and the rim of a label.
struct SignLook {
  Srgb fill;
  Srgb textColor;
  Srgb rim;
  /// Of the rim, in points, inside the label's edge; 0 for none.
  double borderWidth = 0;

  bool operator==(const SignLook&) const = default;
};

/// Face: what a label window holds, a panel with round corners and the text in its
/// middle, on one line, cut off with an ellipsis at its end where it is too wide.
/// Fills the window. Lives as long as the window. Main thread. What is set to what
/// it is already costs nothing.
class SignView {
 public:
  virtual ~SignView() = default;

  /// UTF-8; what is not is replaced.
  virtual void setText(std::string_view text) = 0;
  virtual void setFont(const Font& font) = 0;
  virtual void setLook(const SignLook& look) = 0;

  /// Draws anew soon, whatever has changed.
  virtual void setNeedsDisplay() = 0;
};

/// Face: the window of a label. It has no border but a shadow, is translucent where
/// its view is, lets clicks through to what lies below, is never key, and is in no
/// list of windows that a user sees. Out of sight until orderFront(). Main thread.
///
/// A window is born in the active Space; WindowServer moves it to others.
class SignWindow {
 public:
  struct Options {
    /// Points, global coordinates.
    Rect frame;
    WindowLevel level = WindowLevel::Floating;
    /// Bits of CollectionBehavior.
    std::uint64_t collectionBehavior = 0;
    /// Of the view, in points.
    double cornerRadius = 0;
    /// What the text keeps free on the left and on the right, in points.
    double padding = 0;
  };

  static std::unique_ptr<SignWindow> create(const Options& options);

  /// Orders the window out, in the middle of an animation too.
  virtual ~SignWindow() = default;

  /// By which WindowServer knows the window.
  [[nodiscard]] virtual WindowServer::WindowNumber windowNumber() const = 0;

  /// Owned by the window.
  [[nodiscard]] virtual SignView& view() = 0;

  /// Where the window is: points, global coordinates.
  [[nodiscard]] virtual Rect frame() const = 0;
  /// Shown at once, the view with it; the same frame costs nothing.
  virtual void setFrame(const Rect& frame) = 0;

  virtual void setCollectionBehavior(std::uint64_t behavior) = 0;

  /// From 0 (nothing is seen) to 1: in the middle of an animation what it has come
  /// to, otherwise exactly the value that was set or animated to. 1 at first.
  [[nodiscard]] virtual double alphaValue() const = 0;
  /// At once; ends an animation.
  virtual void setAlphaValue(double alpha) = 0;
  /// From what it is now to the value, in that time; takes the place of an animation
  /// that runs. Returns at once. No time: as setAlphaValue().
  virtual void animateAlphaValue(double alpha, Duration duration) = 0;

  /// Shows the window before the others of its level. The focus stays.
  virtual void orderFront() = 0;
};

}  // namespace vembrix
