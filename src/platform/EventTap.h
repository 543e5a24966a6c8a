#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace vembrix {

/// An event that a tap sees, for the time of the call only.
class TappedEvent {
 public:
  /// The value of the field of that number; 0 when the event has none.
  [[nodiscard]] virtual std::int64_t integerField(int field) const = 0;
  [[nodiscard]] virtual double doubleField(int field) const = 0;

 protected:
  ~TappedEvent() = default;
};

/// Listens to all events of the session without changing any. Main thread;
/// dropping it ends it.
class EventTap {
 public:
  /// What the system says of the tap itself, in place of an event's type.
  static constexpr std::uint32_t disabledByTimeout = 0xFFFFFFFE;
  static constexpr std::uint32_t disabledByUserInput = 0xFFFFFFFF;

  /// The type of the event, or one of the two above, which have no fields.
  using Handler = std::function<void(std::uint32_t type, const TappedEvent& event)>;

  /// A tap at the head of the session's event stream, for all types of events,
  /// not yet enabled. Null where the system gives none, and without the permission for
  /// Accessibility: then none is tried, lest the system ask the user. The handler is called on the
  /// main thread, for every event of the session; it may drop the tap.
  static std::unique_ptr<EventTap> create(Handler handler);

  virtual ~EventTap() = default;

  /// Enables it, also again after the system has disabled it.
  virtual void enable() = 0;
};

}  // namespace vembrix
