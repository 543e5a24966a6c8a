#pragma once

#include <xcb/xproto.h>

#include <QAbstractNativeEventFilter>
#include <cstdint>
#include <optional>
#include <unordered_map>

namespace vembrix {

/// On which desktop each of the program's own windows is that care: a model that the
/// X server's events keep up to date. What an event has made doubtful is asked for
/// when somebody wants to know, all windows in one round trip; otherwise nothing is.
/// Desktops count from 0. Main thread; needs a Qt application with X11.
class X11WindowDesktops : public QAbstractNativeEventFilter {
 public:
  static constexpr std::uint32_t kAll = 0xFFFFFFFF;

  static X11WindowDesktops& shared();

  /// A window of Qt's that has not been shown yet.
  void add(xcb_window_t window);
  void remove(xcb_window_t window);
  [[nodiscard]] bool isKnown(xcb_window_t window) const { return windows_.contains(window); }

  /// The window goes there: as it is shown, or at once where it is already. What is so
  /// costs nothing.
  void move(xcb_window_t window, std::uint32_t desktop);

  /// The window is about to be shown: from now on the window manager moves it.
  void noteShown(xcb_window_t window);

  /// Nothing where nobody has said it, or for an unknown window. May ask the X server.
  [[nodiscard]] std::optional<std::uint32_t> desktop(xcb_window_t window);

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  struct Window {
    std::optional<std::uint32_t> desktop;
    bool isShown = false;
    /// Whether the property is not what it was.
    bool isStale = false;
  };

  X11WindowDesktops();

  void refresh();

  std::unordered_map<xcb_window_t, Window> windows_;
  bool isStale_ = false;
};

}  // namespace vembrix
