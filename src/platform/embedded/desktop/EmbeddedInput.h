#pragma once

#include <cstdint>
#include <functional>

#include "platform/InputMonitor.h"
#include "platform/portable/GlobalMonitors.h"

namespace vembrix {

/// The input devices of the embedded desktop. Main thread.
class EmbeddedInput : public InputMonitor {
 public:
  // The user's input. Global monitors see only events for other programs.
  enum class Target { OtherProgram, OwnWindow };

  /// Sends one event of the type of that mask bit.
  void send(EventMask type, Target target = Target::OtherProgram);
  void moveMouse(Point location, Target target = Target::OtherProgram);

  // InputMonitor

  Token addGlobalMonitor(std::uint64_t mask, std::function<void()> handler) override;
  Point mouseLocation() const override { return mouse_; }

  /// Sets whether later monitors are granted.
  void giveMonitors(bool given) { monitorsGiven_ = given; }
  /// Sets the check whether monitors receive key presses, which needs the permission.
  void setKeysTold(std::function<bool()> told) { keysTold_ = std::move(told); }

 private:
  GlobalMonitors monitors_{[] {}};
  std::function<bool()> keysTold_ = [] { return true; };
  bool monitorsGiven_ = true;
  Point mouse_;
};

}  // namespace vembrix
