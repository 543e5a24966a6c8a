#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <unordered_map>

#include "platform/MainQueue.h"
#include "platform/Token.h"
#include "platform/linux/x11/X11Connection.h"

class QSocketNotifier;

namespace vembrix {

/// Distributes a connection's events to all listeners, so that each batch wakes the program once.
/// Main thread.
class X11EventReader {
 public:
  struct Handlers {
    std::function<void(const xcb_generic_event_t&)> event = {};
    /// Called after the last event of a batch. May ask the server and wait for answers.
    std::function<void()> batchEnd = {};
    /// Called after the last batchEnd to take answers that have arrived. Must not wait.
    std::function<void()> answers = {};
  };

  explicit X11EventReader(std::unique_ptr<X11Connection> connection);
  ~X11EventReader();
  X11EventReader(const X11EventReader&) = delete;
  X11EventReader& operator=(const X11EventReader&) = delete;

  [[nodiscard]] X11Connection& connection() { return *connection_; }

  /// Adds a listener until the token is dropped; the token must not outlive the reader. Listeners
  /// are called in the order in which they were added.
  [[nodiscard]] Token listen(Handlers handlers);
  /// Adds these events to the ones selected on the window, for the window's life.
  void select(xcb_window_t window, std::uint32_t events);

  /// Starts to read events from Qt's event loop; needs a Qt application.
  void begin();
  /// Distributes the events that have arrived. Returns whether further events arrived meanwhile;
  /// the event loop does not wake for them.
  bool read();
  /// To be called after waiting for an answer outside batchEnd: the event loop does not wake for
  /// events that arrived with it.
  void readSoon();
  /// Sends buffered requests.
  void flush();

 private:
  void readAll();
  void handle(const xcb_generic_event_t& event);
  /// Forgets the window of an event or an error that reports its end.
  void forgetIfGone(const xcb_generic_event_t& event);
  /// Distributes one event that arrived while the program was writing or waiting.
  bool handleQueued();

  std::unique_ptr<X11Connection> connection_;
  std::list<Handlers> listeners_;
  /// The selected events, by window.
  std::unordered_map<xcb_window_t, std::uint32_t> selected_;
  std::unique_ptr<QSocketNotifier> notifier_;
  WorkItem furtherReading_;
};

}  // namespace vembrix
