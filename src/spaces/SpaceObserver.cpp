#include "spaces/SpaceObserver.h"

#include "spaces/SpaceManager.h"

namespace vembrix {

void SpaceObserver::activeSpaceDidChange() {
  SpaceManager::shared().reload();
}

}  // namespace vembrix
