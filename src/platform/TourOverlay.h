#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/Geometry.h"
#include "platform/MainQueue.h"
#include "platform/WindowTraits.h"

namespace vembrix {

/// The content of the tour's overlay: a panel with a spinner and, to its right, a text, centred
/// together. Lengths in points.
struct TourOverlayContent {
  /// Global coordinates.
  Rect frame;
  WindowLevel level = WindowLevel::Status;
  /// Bits of CollectionBehavior.
  std::uint64_t collectionBehavior = 0;

  /// The panel's fill, which is translucent.
  Srgb fill;
  double cornerRadius = 0;

  /// Width and height of the spinner, which has the dark appearance.
  double spinnerSize = 0;
  std::string text;
  Font font;
  Srgb textColor;
  /// The gap between the spinner and the text.
  double spacing = 0;
  /// The margin of both on the left and on the right.
  double padding = 0;

  bool operator==(const TourOverlayContent&) const = default;
};

/// Face: the window that covers the tour, with its TourOverlayView. It has a shadow but no border,
/// lets clicks through, is never key, and appears in no list of windows. Main thread.
class TourOverlay {
 public:
  /// Hidden until show().
  static std::unique_ptr<TourOverlay> create(const TourOverlayContent& content);

  /// Orders the window out at once, or when a running fade-out ends.
  virtual ~TourOverlay() = default;

  /// Orders the invisible window to the front and fades it in. Does not take the focus.
  virtual void show(Duration fade) = 0;

  /// Starts to fade the window out from its present alpha, orders it out at the end, and returns at
  /// once. The fade continues when this object is destroyed.
  virtual void hide(Duration fade) = 0;
};

}  // namespace vembrix
