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

/// All that the overlay of the tour shows: a panel with a spinner and, right of it,
/// a text, both in its middle. Lengths in points.
struct TourOverlayContent {
  /// Global coordinates.
  Rect frame;
  WindowLevel level = WindowLevel::Status;
  /// Bits of CollectionBehavior.
  std::uint64_t collectionBehavior = 0;

  /// Of the panel, translucent.
  Srgb fill;
  double cornerRadius = 0;

  /// The width and the height of the spinner, which looks as it does in the dark.
  double spinnerSize = 0;
  std::string text;
  Font font;
  Srgb textColor;
  /// Between the spinner and the text.
  double spacing = 0;
  /// What both keep free on the left and on the right.
  double padding = 0;

  bool operator==(const TourOverlayContent&) const = default;
};

/// Face: the window that covers the tour, with its TourOverlayView. It has no border
/// but a shadow, lets clicks through, is never key, and is in no list of windows that
/// a user sees. Main thread.
class TourOverlay {
 public:
  /// Out of sight until show().
  static std::unique_ptr<TourOverlay> create(const TourOverlayContent& content);

  /// Orders the window out at once, unless it fades out: then at the end of that.
  virtual ~TourOverlay() = default;

  /// Orders the window to the front, invisible, and fades it in. The focus stays.
  virtual void show(Duration fade) = 0;

  /// Fades the window out from what it has come to, and orders it out at the end;
  /// that goes on when this object goes. Returns at once.
  virtual void hide(Duration fade) = 0;
};

}  // namespace vembrix
