#pragma once

#include <functional>
#include <memory>

#include "platform/Token.h"

namespace vembrix {

/// Reports when the pointer arrives in the top left corner of the main screen. Main thread; owns
/// the monitor.
class HotCornerWatcher : public std::enable_shared_from_this<HotCornerWatcher> {
 public:
  static std::shared_ptr<HotCornerWatcher> create();

  /// The side of the square corner zone in points.
  double triggerZoneSize = 5;

  /// Called on the main queue once per arrival; again only after the pointer has
  /// left the corner.
  std::function<void()> onApproach = [] {};

  /// Starts to watch; to be called once.
  void start();

 private:
  HotCornerWatcher() = default;
  void handleMouseMoved();

  bool armed_ = true;
  Token monitor_;
};

}  // namespace vembrix
