#pragma once

#include <functional>
#include <memory>

#include "platform/MainQueue.h"
#include "platform/linux/X11Connection.h"

class QSocketNotifier;

namespace vembrix {

/// Hands on the events of a connection of its own as they come in. Main thread;
/// needs a Qt application.
class X11EventReader {
 public:
  struct Handlers {
    std::function<void(const xcb_generic_event_t&)> event;
    /// After the last event of those that came in together. May ask the server
    /// and wait for answers.
    std::function<void()> batchEnd;
  };

  X11EventReader(std::unique_ptr<X11Connection> connection, Handlers handlers);
  ~X11EventReader();
  X11EventReader(const X11EventReader&) = delete;
  X11EventReader& operator=(const X11EventReader&) = delete;

  [[nodiscard]] X11Connection& connection() { return *connection_; }

  /// To be called after waiting for an answer elsewhere than in the handlers:
  /// events that came in with it wake nobody.
  void readSoon();

 private:
  void read();
  void handle(const xcb_generic_event_t& event);

  std::unique_ptr<X11Connection> connection_;
  Handlers handlers_;
  std::unique_ptr<QSocketNotifier> notifier_;
  WorkItem furtherReading_;
};

}  // namespace vembrix
