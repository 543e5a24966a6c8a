#pragma once

#include <memory>
#include <optional>

#include "platform/InputMonitor.h"
#include "platform/embedded/GlobalMonitors.h"
#include "platform/linux/OwnWindows.h"
#include "platform/linux/TouchpadSwipe.h"
#include "platform/linux/X11EventReader.h"

namespace vembrix {

/// The user's input on the whole display, by the XInput extension. Only the
/// types of events that somebody watches wake the program: pointer movement is
/// costly. Which key it was is never looked at. Main thread; needs a Qt
/// application.
class X11Input : public InputMonitor {
 public:
  /// That of the session.
  static X11Input& shared();

  /// Without a connection nothing is noticed and the pointer is at the origin.
  explicit X11Input(std::unique_ptr<X11Connection> connection);
  ~X11Input() override;
  X11Input(const X11Input&) = delete;
  X11Input& operator=(const X11Input&) = delete;

  Token addGlobalMonitor(std::uint64_t mask, std::function<void()> handler) override;

  /// Asks the server, once for all calls of one round of handlers: the events
  /// of pointer movement tell how far, not where it is. A round is one for all
  /// movements that came in together, so this is one round trip (some 50 us
  /// on the same machine) per wakeup at the most.
  Point mouseLocation() const override;

  /// Where the touchpad's swipes between Spaces are told from now on. They come
  /// from servers and touchpad drivers that know gestures, and only where no
  /// other program takes them for itself.
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

  /// The extension's number; 0 where the server has none.
  std::uint8_t extension_ = 0;
  bool knowsGestures_ = false;
  /// Bits of event types.
  std::uint64_t selected_ = 0;

  /// Whether the pointer moved over other programs' windows in this batch.
  bool moved_ = false;
  bool inRound_ = false;
  mutable std::optional<Point> location_;
};

}  // namespace vembrix
