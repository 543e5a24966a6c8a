#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <unordered_map>

#include "platform/MainQueue.h"
#include "platform/Token.h"
#include "platform/linux/X11Connection.h"

class QSocketNotifier;

namespace vembrix {

/// Hands on the events of a connection to all its listeners, so that what happens on the
/// display wakes the program once. Main thread.
class X11EventReader {
 public:
  struct Handlers {
    std::function<void(const xcb_generic_event_t&)> event = {};
    /// After the last event of those that came in together. May ask the server
    /// and wait for answers.
    std::function<void()> batchEnd = {};
    /// After the last batchEnd, for answers that are taken as they come. Does not wait.
    std::function<void()> answers = {};
  };

  explicit X11EventReader(std::unique_ptr<X11Connection> connection);
  ~X11EventReader();
  X11EventReader(const X11EventReader&) = delete;
  X11EventReader& operator=(const X11EventReader&) = delete;

  [[nodiscard]] X11Connection& connection() { return *connection_; }

  /// Until the token is dropped, which may not outlive the reader. Listeners are called
  /// in the order in which they came.
  [[nodiscard]] Token listen(Handlers handlers);
  /// Asks for these events of the window, beside those that others have asked for. They
  /// are asked for until the window goes.
  void select(xcb_window_t window, std::uint32_t events);

  /// Reads by itself from now on; needs a Qt application.
  void begin();
  /// Hands on what has come in. Whether events came in meanwhile that wake nobody.
  bool read();
  /// To be called after waiting for an answer elsewhere than in batchEnd: events that
  /// came in with it wake nobody.
  void readSoon();
  /// Sends what was asked for.
  void flush();

 private:
  void readAll();
  void handle(const xcb_generic_event_t& event);
  /// A window that an event or an error tells of.
  void forgetIfGone(const xcb_generic_event_t& event);
  /// Hands on one that has come in while the program was writing or waiting.
  bool handleQueued();

  std::unique_ptr<X11Connection> connection_;
  std::list<Handlers> listeners_;
  /// By window.
  std::unordered_map<xcb_window_t, std::uint32_t> selected_;
  std::unique_ptr<QSocketNotifier> notifier_;
  WorkItem furtherReading_;
};

}  // namespace vembrix
