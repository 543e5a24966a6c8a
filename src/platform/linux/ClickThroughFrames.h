#pragma once

#include <xcb/xproto.h>

#include <QAbstractNativeEventFilter>
#include <unordered_map>
#include <vector>

namespace vembrix {

/// Lets clicks through the frames that the window manager puts around windows which
/// let them through themselves: an empty input region is seldom passed on to the frame,
/// which then takes every click above other programs' windows, seen or not. Main
/// thread; needs a Qt application with X11.
class ClickThroughFrames : public QAbstractNativeEventFilter {
 public:
  static ClickThroughFrames& shared();

  /// A window of Qt's that has not been shown yet.
  void add(xcb_window_t window);
  void remove(xcb_window_t window);

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  ClickThroughFrames();

  /// The windows between the program's own and the root, for each of its own.
  std::unordered_map<xcb_window_t, std::vector<xcb_window_t>> frames_;
};

}  // namespace vembrix
