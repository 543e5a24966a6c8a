#include "platform/linux/X11EventReader.h"

#include <QSocketNotifier>
#include <utility>

#include "platform/linux/ForgedEvents.h"

namespace vembrix {

X11EventReader::X11EventReader(std::unique_ptr<X11Connection> connection, Handlers handlers)
    : connection_(std::move(connection)),
      handlers_(std::move(handlers)),
      notifier_(std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_->xcb()),
                                                  QSocketNotifier::Read)) {
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { read(); });
}

X11EventReader::~X11EventReader() = default;

void X11EventReader::read() {
  xcb_connection_t* xcb = connection_->xcb();
  while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(xcb)}) {
    handle(*event);
  }
  handlers_.batchEnd();
  if (connection_->isBroken()) {
    // The desktop's connection to the same server ends the program; until then
    // the dead socket must not keep the loop busy.
    notifier_->setEnabled(false);
    return;
  }
  xcb_flush(xcb);
  const XcbPtr<xcb_generic_event_t> further{xcb_poll_for_queued_event(xcb)};
  if (!further) return;
  handle(*further);
  // Not at once: a stream of events must leave the loop time for others.
  readSoon();
}

void X11EventReader::handle(const xcb_generic_event_t& event) {
  // Window managers tell of places to the window alone: the root's are the server's.
  const bool isPlace = (event.response_type & 0x7F) == XCB_CONFIGURE_NOTIFY;
  const bool isSent = (event.response_type & 0x80) != 0;
  if (!isForged(event) && !(isSent && isPlace)) handlers_.event(event);
}

void X11EventReader::readSoon() {
  furtherReading_ = MainQueue::main().schedule(Duration::zero(), [this] { read(); });
}

}  // namespace vembrix
