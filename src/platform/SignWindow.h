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
  /// The rim's width in points, inside the label's edge; 0 for none.
  double borderWidth = 0;

  bool operator==(const SignLook&) const = default;
};

/// Face: the content of a label window, a panel with round corners and one centred line of text,
/// truncated at its end with an ellipsis. Fills the window and lives as long. Setting an unchanged
/// value costs nothing. Main thread.
class SignView {
 public:
  virtual ~SignView() = default;

  /// Takes UTF-8; ill-formed parts are replaced.
  virtual void setText(std::string_view text) = 0;
  virtual void setFont(const Font& font) = 0;
  virtual void setLook(const SignLook& look) = 0;

  /// Requests a redraw.
  virtual void setNeedsDisplay() = 0;
};

/// Face: the window of a label. It has a shadow but no border, is translucent where its view is,
/// lets clicks through, is never key, and appears in no list of windows. Hidden until orderFront().
/// Main thread.
///
/// A new window is in the active Space; WindowServer moves it to others.
class SignWindow {
 public:
  struct Options {
    /// Points, global coordinates.
    Rect frame;
    WindowLevel level = WindowLevel::Floating;
    /// Bits of CollectionBehavior.
    std::uint64_t collectionBehavior = 0;
    /// The view's, in points.
    double cornerRadius = 0;
    /// The margin of the text on the left and on the right, in points.
    double padding = 0;
  };

  static std::unique_ptr<SignWindow> create(const Options& options);

  /// Orders the window out, also during an animation.
  virtual ~SignWindow() = default;

  /// Identifies the window to WindowServer.
  [[nodiscard]] virtual WindowServer::WindowNumber windowNumber() const = 0;

  /// Owned by the window.
  [[nodiscard]] virtual SignView& view() = 0;

  /// In points, global coordinates.
  [[nodiscard]] virtual Rect frame() const = 0;
  /// Takes effect at once, for the view too; an equal frame costs nothing.
  virtual void setFrame(const Rect& frame) = 0;

  virtual void setCollectionBehavior(std::uint64_t behavior) = 0;

  /// From 0 (invisible) to 1; initially 1. During an animation the present value, else exactly the
  /// value last set or animated to.
  [[nodiscard]] virtual double alphaValue() const = 0;
  /// Takes effect at once and ends an animation.
  virtual void setAlphaValue(double alpha) = 0;
  /// Starts an animation from the present value and returns; replaces a running one. A duration of
  /// zero acts as setAlphaValue().
  virtual void animateAlphaValue(double alpha, Duration duration) = 0;

  /// Shows the window in front of the others of its level. Does not take the focus.
  virtual void orderFront() = 0;
};

}  // namespace vembrix
