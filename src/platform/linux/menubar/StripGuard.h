#pragma once

#include <xcb/xproto.h>

#include <QAbstractNativeEventFilter>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/linux/WindowHints.h"

namespace vembrix {

/// Sees to it that a window stays what it was made as, whatever other programs do to it:
/// unmap, close or swallow it, or take its hints away. It listens to what the X server
/// tells of the window and asks only after that. Main thread; needs a Qt application
/// with X11.
class StripGuard : public QAbstractNativeEventFilter {
 public:
  struct Handlers {
    /// Tells the window's hints anew, as it is.
    std::function<void()> repair;
    /// Makes the window anew: the only way to come back to a window manager that has
    /// been told to let it go.
    std::function<void()> remake;
    /// All is well, as far as the guard knows.
    std::function<void()> settled;
  };

  explicit StripGuard(Handlers handlers);
  ~StripGuard() override;
  StripGuard(const StripGuard&) = delete;
  StripGuard& operator=(const StripGuard&) = delete;

  /// A window that has all its hints and is about to be shown; in place of the one
  /// before.
  void watch(xcb_window_t window);
  /// The window is to come up from now on. A window manager that is just starting may
  /// have missed that.
  void expectMapping();
  /// What the window keeps free has been told anew, once.
  void expectStrut(const Strut& strut);
  /// Looks whether all is well, in a moment.
  void checkSoon();

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  /// What others might take away. Sorted where it is a list.
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

  Handlers handlers_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  /// What the window manager has made of the hints.
  std::optional<Facts> accepted_;
  Strut strut_{};
  /// Events to come of the program's own changes.
  int ownStrutEvents_ = 0;
  bool wasMapped_ = false;
  bool wasReparented_ = false;
  /// In a row, without success.
  int attempts_ = 0;
  WorkItem checking_;
  WorkItem mapping_;
};

}  // namespace vembrix
