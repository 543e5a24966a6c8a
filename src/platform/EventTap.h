#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace vembrix {

/// An event that a tap receives; valid during the call only.
class TappedEvent {
 public:
  /// Returns the value of the field of that number; 0 when the event has none.
  [[nodiscard]] virtual std::int64_t integerField(int field) const = 0;
  [[nodiscard]] virtual double doubleField(int field) const = 0;

 protected:
  ~TappedEvent() = default;
};

/// Listens to all events of the session without changing any. Main thread;
/// dropping it ends it.
class EventTap {
 public:
  /// Reports about the tap itself, delivered in place of an event's type.
  static constexpr std::uint32_t disabledByTimeout = 0xFFFFFFFE;
  static constexpr std::uint32_t disabledByUserInput = 0xFFFFFFFF;

  /// Receives an event and its type; the two types above have no fields.
  using Handler = std::function<void(std::uint32_t type, const TappedEvent& event)>;

  /// Creates a tap, not yet enabled, at the head of the session's event stream, for all types of
  /// events. The handler is called on the main thread and may drop the tap. Null where the system
  /// refuses, and without the permission for Accessibility, for which this call never asks.
  static std::unique_ptr<EventTap> create(Handler handler);

  virtual ~EventTap() = default;

  /// Enables the tap, also after the system has disabled it.
  virtual void enable() = 0;
};

}  // namespace vembrix
