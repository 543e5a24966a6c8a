#pragma once

namespace vembrix {

/// Keeps the model of Spaces in step with the system: whoever hears that the
/// active Space changed tells it here. Main thread.
class SpaceObserver {
 public:
  void activeSpaceDidChange();
};

}  // namespace vembrix
