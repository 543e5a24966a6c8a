#include "platform/portable/EventStream.h"

#include <algorithm>
#include <utility>

namespace vembrix {

void GestureEvent::setIntegerField(int field, std::int64_t value) {
  if (Entry* entry = entryFor(field)) {
    entry->integer = value;
    entry->real = static_cast<double>(value);
  }
}

void GestureEvent::setDoubleField(int field, double value) {
  if (Entry* entry = entryFor(field)) {
    entry->real = value;
    entry->integer = static_cast<std::int64_t>(value);
  }
}

std::int64_t GestureEvent::integerField(int field) const {
  const Entry* entry = find(field);
  return entry ? entry->integer : 0;
}

double GestureEvent::doubleField(int field) const {
  const Entry* entry = find(field);
  return entry ? entry->real : 0;
}

std::vector<int> GestureEvent::fieldOrder() const {
  std::vector<int> order;
  for (std::size_t i = 0; i < count_; ++i) order.push_back(entries_[i].field);
  return order;
}

const GestureEvent::Entry* GestureEvent::find(int field) const {
  for (std::size_t i = 0; i < count_; ++i) {
    if (entries_[i].field == field) return &entries_[i];
  }
  return nullptr;
}

GestureEvent::Entry* GestureEvent::entryFor(int field) {
  if (const Entry* found = find(field))
    return &entries_[static_cast<std::size_t>(found - entries_.data())];
  if (count_ == entries_.size()) return nullptr;
  entries_[count_].field = field;
  return &entries_[count_++];
}

class EventStream::Tap : public EventTap {
 public:
  Tap(EventStream& stream, Handler handler)
      : stream_(stream), handler_(std::make_shared<const Handler>(std::move(handler))) {
    stream_.taps_.insert(stream_.taps_.begin(), this);
  }
  ~Tap() override { std::erase(stream_.taps_, this); }
  Tap(const Tap&) = delete;
  Tap& operator=(const Tap&) = delete;

  void enable() override { enabled_ = true; }

  void see(std::uint32_t type, const GestureEvent& event) {
    if (enabled_) call(type, event);
  }
  void disable(std::uint32_t reason) {
    enabled_ = false;
    call(reason, GestureEvent());
  }

 private:
  void call(std::uint32_t type, const GestureEvent& event) const {
    // A copy, because it may drop the tap while it runs.
    const auto handler = handler_;
    (*handler)(type, event);
  }

  EventStream& stream_;
  std::shared_ptr<const Handler> handler_;
  bool enabled_ = false;
};

class EventStream::PostableEvent : public DockSwipeEvent {
 public:
  PostableEvent(EventStream& stream, std::int64_t sourceProcess, std::function<bool()> permitted)
      : stream_(stream), sourceProcess_(sourceProcess), permitted_(std::move(permitted)) {}

  void setIntegerField(int field, std::int64_t value) override {
    event_.setIntegerField(field, value);
  }
  void setDoubleField(int field, double value) override { event_.setDoubleField(field, value); }

  void post() override {
    if (!permitted_()) return;
    GestureEvent sent = event_;
    sent.setIntegerField(dockswipe::SourceProcess, sourceProcess_);
    stream_.send(sent);
  }

 private:
  EventStream& stream_;
  std::int64_t sourceProcess_;
  std::function<bool()> permitted_;
  GestureEvent event_;
};

EventStream::EventStream(std::function<void(const GestureEvent&)> receiver)
    : receiver_(std::move(receiver)) {}

std::unique_ptr<EventTap> EventStream::makeTap(EventTap::Handler handler) {
  return std::make_unique<Tap>(*this, std::move(handler));
}

std::unique_ptr<DockSwipeEvent> EventStream::makeEvent(std::int64_t sourceProcess,
                                                       std::function<bool()> permitted) {
  return std::make_unique<PostableEvent>(*this, sourceProcess, std::move(permitted));
}

void EventStream::send(const GestureEvent& event) {
  sendToTaps(static_cast<std::uint32_t>(event.integerField(dockswipe::EventType)), event);
  if (receiver_) receiver_(event);
}

void EventStream::sendToTaps(std::uint32_t type, const GestureEvent& event) {
  forEachTap([&](Tap& tap) { tap.see(type, event); });
}

void EventStream::disableTaps(std::uint32_t reason) {
  forEachTap([&](Tap& tap) { tap.disable(reason); });
}

template <typename Visit>
void EventStream::forEachTap(Visit visit) {
  for (std::size_t i = 0; i < taps_.size();) {
    Tap* const tap = taps_[i];
    visit(*tap);
    // A handler may drop its tap; the next tap is then at its index.
    if (i < taps_.size() && taps_[i] == tap) ++i;
  }
}

}  // namespace vembrix
