#pragma once

#include <cstdint>
#include <functional>

#include "platform/InputMonitor.h"
#include "platform/embedded/GlobalMonitors.h"

namespace vembrix {

/// What the user does at the devices of the embedded desktop. Main thread.
class EmbeddedInput : public InputMonitor {
 public:
  // What the user does. Where the event goes decides whether global monitors
  // see it.
  enum class Target { OtherProgram, OwnWindow };

  /// One event of the type of that mask bit.
  void send(EventMask type, Target target = Target::OtherProgram);
  void moveMouse(Point location, Target target = Target::OtherProgram);

  // InputMonitor

  Token addGlobalMonitor(std::uint64_t mask, std::function<void()> handler) override;
  Point mouseLocation() const override { return mouse_; }

  /// Whether monitors asked for from now on are given.
  void giveMonitors(bool given) { monitorsGiven_ = given; }
  /// Whether key presses are told to monitors, which needs the permission.
  void setKeysTold(std::function<bool()> told) { keysTold_ = std::move(told); }

 private:
  GlobalMonitors monitors_{[] {}};
  std::function<bool()> keysTold_ = [] { return true; };
  bool monitorsGiven_ = true;
  Point mouse_;
};

}  // namespace vembrix
