#pragma once

#include <xcb/xproto.h>

#include <QImage>
#include <QRect>
#include <QSize>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/Color.h"
#include "platform/StatusItem.h"

namespace vembrix {

/// The strip's looks, which the X server keeps and draws as the background of the window: a look
/// that was seen before is shown without painting, and no event asks for it. Main thread; needs a
/// Qt application.
class StripPicture {
 public:
  /// The properties of a look besides the content.
  struct Frame {
    /// In pixels.
    QSize size;
    /// In points.
    QRect item;
    double scale = 1;
    Appearance appearance = Appearance::Light;
    bool operator==(const Frame&) const = default;
  };
  enum class Shows {
    /// At once.
    Now,
    /// When the window gets its new size, so that neither size has the other's picture.
    WithNewSize
  };

  /// Null where the server cannot show the picture, so that Qt has to paint the window. Asks the
  /// server and waits.
  static std::unique_ptr<StripPicture> create(xcb_window_t window);

  ~StripPicture();
  StripPicture(const StripPicture&) = delete;
  StripPicture& operator=(const StripPicture&) = delete;

  /// Draws another window from now on, which looks like the former one to the server. Asks the
  /// server and waits.
  void setWindow(xcb_window_t window);

  /// While muted, the server reports no change of the window's properties: each report wakes the
  /// program, also that of its own change. Costs nothing where it is so already.
  void mute(bool isMuted);

  /// Shows a look. If the server does not have it, `paint` paints it: an image of the frame's size.
  /// Costs nothing while the look is the same.
  void show(const StatusItemContent& content, const Frame& frame, Shows when,
            const std::function<QImage()>& paint);

 private:
  struct Look {
    StatusItemContent content;
    Frame frame;
    xcb_pixmap_t pixmap = XCB_NONE;
    std::size_t bytes = 0;
  };

  StripPicture() = default;
  /// Makes the look the first in the list; paints it if it is new.
  void find(const StatusItemContent& content, const Frame& frame,
            const std::function<QImage()>& paint);
  void dropOldest();

  xcb_window_t window_ = XCB_WINDOW_NONE;
  std::uint8_t depth_ = 0;
  /// The events that Qt has selected.
  std::uint32_t events_ = 0;
  bool isMuted_ = false;
  /// The window's background; none for a new window.
  xcb_pixmap_t shown_ = XCB_NONE;
  /// The latest first.
  std::vector<Look> looks_;
};

}  // namespace vembrix
