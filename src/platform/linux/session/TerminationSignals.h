#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace vembrix {

/// Calls a handler on the main thread, from the event loop, when the process is
/// asked to end (SIGTERM, SIGINT, or SIGHUP when its terminal closes). One per process; needs a Qt
/// application.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> handler);
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace vembrix
