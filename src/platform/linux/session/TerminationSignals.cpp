#include "platform/linux/session/TerminationSignals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <utility>

namespace vembrix {
namespace {

/// A signal handler may do little but write to this; the event loop reads it.
int eventCounter = -1;

void noteSignal(int /*signal*/) {
  const int error = errno;
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = ::write(eventCounter, &one, sizeof one);
  errno = error;
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> handler) {
  eventCounter = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  // The signals then keep their usual effect, which also ends the program.
  if (eventCounter < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(eventCounter, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, [handler = std::move(handler)] {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t read = ::read(eventCounter, &count, sizeof count);
    handler();
  });
  struct sigaction action {};
  action.sa_handler = noteSignal;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    struct sigaction former {};
    sigaction(signal, &action, &former);
    // A signal that is ignored at the start, as with nohup, stays ignored.
    if (former.sa_handler == SIG_IGN) sigaction(signal, &former, nullptr);
  }
}

TerminationSignals::~TerminationSignals() = default;

}  // namespace vembrix
