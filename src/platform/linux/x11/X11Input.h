#pragma once

#include <memory>
#include <optional>

#include "platform/InputMonitor.h"
#include "platform/linux/x11/OwnWindows.h"
#include "platform/linux/x11/TouchpadSwipe.h"
#include "platform/linux/x11/X11EventReader.h"
#include "platform/portable/GlobalMonitors.h"

namespace vembrix {

/// Observes the user's input on the whole display through the XInput extension. Only event types
/// with an observer wake the program, as pointer movement is costly. Never reads which key was
/// pressed. Main thread; needs a Qt application.
class X11Input : public InputMonitor {
 public:
  /// The instance for the session's display.
  static X11Input& shared();

  /// With a null connection there are no events, and the pointer is at the origin.
  explicit X11Input(std::unique_ptr<X11Connection> connection);
  ~X11Input() override;
  X11Input(const X11Input&) = delete;
  X11Input& operator=(const X11Input&) = delete;

  Token addGlobalMonitor(std::uint64_t mask, std::function<void()> handler) override;

  /// Asks the server at most once per batch of events (some 50 us on the same machine), because
  /// events of pointer movement hold distances, not positions.
  Point mouseLocation() const override;

  /// Sets the listener for the touchpad's swipe gestures. Needs a server and a driver that support
  /// gestures, and no other program that grabs them.
  void followSwipes(std::function<void(const GestureEvent&)> listener);

 private:
  void findExtension();
  void select();
  void note(const xcb_generic_event_t& event);
  void noteInput(const xcb_ge_generic_event_t& event);
  void noteButton(std::uint32_t button);
  void noteSwipe(const xcb_ge_generic_event_t& event);
  void batchEnd();

  GlobalMonitors monitors_;
  std::optional<TouchpadSwipe> swipe_;
  std::unique_ptr<X11EventReader> reader_;
  Token listening_;
  std::optional<OwnWindows> ownWindows_;

  /// The extension's number; 0 if the server does not have it.
  std::uint8_t extension_ = 0;
  bool knowsGestures_ = false;
  /// Bits of event types.
  std::uint64_t selected_ = 0;

  /// Whether the pointer has moved over other programs' windows in this batch.
  bool moved_ = false;
  bool inRound_ = false;
  mutable std::optional<Point> location_;
};

}  // namespace vembrix
