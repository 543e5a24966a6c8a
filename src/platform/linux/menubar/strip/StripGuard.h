#pragma once

#include <xcb/xproto.h>

#include <QAbstractNativeEventFilter>
#include <QRect>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/linux/x11/WindowHints.h"

namespace vembrix {

/// Restores a window after other programs have unmapped, closed or swallowed it, or removed its
/// hints. Follows the X server's events of the window and queries it only after one. Keeps from Qt
/// what a dependable window manager reports of a new size. Main thread; needs a Qt application with
/// X11.
class StripGuard : public QAbstractNativeEventFilter {
 public:
  struct Handlers {
    /// Sets the hints of the existing window again.
    std::function<void()> repair;
    /// Creates the window again: the only way back to a window manager that was told to release it.
    std::function<void()> remake;
    /// Called when the window is as it should be, as far as known.
    std::function<void()> settled;
    /// Returns the frame that the window was last asked to take, in pixels.
    std::function<QRect()> requestedFrame;
    /// Ends what awaitSize() began.
    std::function<void()> sized;
  };

  explicit StripGuard(Handlers handlers);
  ~StripGuard() override;
  StripGuard(const StripGuard&) = delete;
  StripGuard& operator=(const StripGuard&) = delete;

  /// Guards a window that has all its hints and is about to be shown, instead of the former one.
  void watch(xcb_window_t window);
  /// Expects the window to be mapped from now on; a window manager that is just starting may miss
  /// the request.
  void expectMapping();
  /// To be called after each time that the program has set the window's strut.
  void expectStrut(const Strut& strut);
  /// To be called after a shown window was asked to take another size. `wasInPlace`: whether it had
  /// the frame that was requested before. Returns whether the window manager has done all that was
  /// asked of it so far; its reports of the requested frame then do not reach Qt, which would ask
  /// for the place and the margins and wait, and `sized` is called instead.
  bool awaitSize(bool wasInPlace);
  /// Checks the window after a moment.
  void checkSoon();

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  /// The properties that others might remove; lists are sorted.
  struct Facts {
    bool isViewable = false;
    std::vector<std::uint32_t> types;
    std::vector<std::uint32_t> states;
    std::vector<std::uint32_t> desktop;
    std::vector<std::uint32_t> strut;
    std::vector<std::uint32_t> partialStrut;
  };
  enum class Health { Well, HintsLost, Lost };

  [[nodiscard]] Facts read() const;
  [[nodiscard]] Health healthOf(const Facts& facts) const;
  [[nodiscard]] bool isSwallowed() const;
  void check();
  void noteProperty(const xcb_property_notify_event_t& event);
  /// Returns whether the report holds nothing new.
  bool noteFrame(const xcb_configure_notify_event_t& event);
  void endAwaiting();

  Handlers handlers_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  /// The properties as the window manager has set them.
  std::optional<Facts> accepted_;
  Strut strut_{};
  /// Expected events of the program's own changes.
  int ownStrutEvents_ = 0;
  bool wasMapped_ = false;
  bool wasReparented_ = false;
  /// Whether a report of the requested size is to come, which is not for Qt.
  bool isAwaiting_ = false;
  /// Number of requests in succession after which the window was as requested.
  int fulfilled_ = 0;
  /// Successive attempts without success.
  int attempts_ = 0;
  WorkItem checking_;
  WorkItem mapping_;
};

}  // namespace vembrix
