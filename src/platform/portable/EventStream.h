#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "platform/DockSwipeEvent.h"
#include "platform/EventTap.h"

namespace vembrix {

/// A gesture as numbered fields: a value type. Holds as many fields as a Dock swipe has and drops
/// further ones.
class GestureEvent final : public TappedEvent, public EventFields {
 public:
  void setIntegerField(int field, std::int64_t value) override;
  void setDoubleField(int field, double value) override;

  [[nodiscard]] std::int64_t integerField(int field) const override;
  [[nodiscard]] double doubleField(int field) const override;

  /// The field numbers in the order in which they were first set.
  [[nodiscard]] std::vector<int> fieldOrder() const;

 private:
  struct Entry {
    int field = 0;
    std::int64_t integer = 0;
    double real = 0;
  };

  Entry* entryFor(int field);
  [[nodiscard]] const Entry* find(int field) const;

  std::array<Entry, 16> entries_{};
  std::size_t count_ = 0;
};

/// A session's stream of gesture events within the process: events of a device or this process pass
/// the taps and then reach the receiver (a Dock). Main thread.
class EventStream {
 public:
  /// `receiver` is called with every event after the taps; may be empty.
  explicit EventStream(std::function<void(const GestureEvent&)> receiver);

  /// Creates a tap on this stream, which must outlive it.
  std::unique_ptr<EventTap> makeTap(EventTap::Handler handler);
  /// Creates an event that, when posted, gets `sourceProcess` and is sent if `permitted` returns
  /// true at that time.
  std::unique_ptr<DockSwipeEvent> makeEvent(std::int64_t sourceProcess,
                                            std::function<bool()> permitted);

  void send(const GestureEvent& event);
  /// Sends an event of a device to the taps alone, because no Dock of this process handles it.
  void sendToTaps(std::uint32_t type, const GestureEvent& event);

  /// Disables all taps, as the system does with slow ones, and reports the reason to them.
  void disableTaps(std::uint32_t reason);

 private:
  class Tap;
  class PostableEvent;

  template <typename Visit>
  void forEachTap(Visit visit);

  std::function<void(const GestureEvent&)> receiver_;
  std::vector<Tap*> taps_;
};

}  // namespace vembrix
