#pragma once

namespace vembrix {

/// Updates the model of Spaces when the system reports that the active Space has changed. Main
/// thread.
class SpaceObserver {
 public:
  void activeSpaceDidChange();
};

}  // namespace vembrix
