#include "platform/linux/x11/X11EventReader.h"

#include <QSocketNotifier>
#include <iterator>
#include <utility>

#include "platform/linux/support/XcbEvent.h"
#include "platform/linux/x11/ForgedEvents.h"

namespace vembrix {

X11EventReader::X11EventReader(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)) {}

X11EventReader::~X11EventReader() = default;

Token X11EventReader::listen(Handlers handlers) {
  listeners_.push_back(std::move(handlers));
  return Token([this, listener = std::prev(listeners_.end())] { listeners_.erase(listener); });
}

void X11EventReader::select(xcb_window_t window, std::uint32_t events) {
  std::uint32_t& selected = selected_[window];
  if ((selected | events) == selected) return;
  selected |= events;
  xcb_change_window_attributes(connection_->xcb(), window, XCB_CW_EVENT_MASK, &selected);
}

void X11EventReader::begin() {
  notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_->xcb()),
                                                QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { readAll(); });
  // Events that xcb has read already do not wake the notifier.
  readAll();
}

bool X11EventReader::read() {
  xcb_connection_t* xcb = connection_->xcb();
  // Asks the socket again only where one reading may not have been all.
  constexpr int kFewerThanABufferHolds = 64;
  int handled = 0;
  do {
    handled = 0;
    XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(xcb)};
    for (; event; event.reset(xcb_poll_for_queued_event(xcb))) {
      handle(*event);
      handled += 1;
    }
  } while (handled >= kFewerThanABufferHolds);
  for (const Handlers& listener : listeners_) {
    if (listener.batchEnd) listener.batchEnd();
  }
  for (const Handlers& listener : listeners_) {
    if (listener.answers) listener.answers();
  }
  xcb_flush(xcb);
  return handleQueued();
}

void X11EventReader::readAll() {
  const bool isMore = read();
  // Listeners that need the server end the program. Until then the dead socket must not keep the
  // loop busy.
  if (connection_->isBroken() && notifier_) {
    notifier_->setEnabled(false);
  } else if (isMore) {
    // Deferred, so that a stream of events leaves the loop time for others.
    readSoon();
  }
}

void X11EventReader::handle(const xcb_generic_event_t& event) {
  // Window managers send positions to the window itself, so a sent position on another window is
  // forged.
  const bool isPlace = (event.response_type & 0x7F) == XCB_CONFIGURE_NOTIFY;
  const bool isSent = (event.response_type & 0x80) != 0;
  if (isForged(event) || (isSent && isPlace)) return;
  for (const Handlers& listener : listeners_) listener.event(event);
  forgetIfGone(event);
}

void X11EventReader::forgetIfGone(const xcb_generic_event_t& event) {
  // A later window may have the same id.
  if (eventType(event) == XCB_DESTROY_NOTIFY) {
    selected_.erase(as<xcb_destroy_notify_event_t>(event).window);
  } else if (event.response_type == 0) {
    const auto& error = as<xcb_generic_error_t>(event);
    if (error.error_code == XCB_WINDOW) selected_.erase(error.resource_id);
  }
}

bool X11EventReader::handleQueued() {
  const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_queued_event(connection_->xcb())};
  if (event) handle(*event);
  return event != nullptr;
}

void X11EventReader::readSoon() {
  furtherReading_ = MainQueue::main().schedule(Duration::zero(), [this] { readAll(); });
}

void X11EventReader::flush() {
  xcb_flush(connection_->xcb());
  // If the pipe is full, xcb reads events while it writes.
  if (handleQueued()) readSoon();
}

}  // namespace vembrix
