#include "spaces/SpaceObserver.h"

#include "platform/UserDefaults.h"
#include "spaces/SpaceManager.h"

namespace vembrix {

void SpaceObserver::activeSpaceDidChange() {
  // The title and the labels, which follow within this call, are drawn by the same settings.
  const Token reading = UserDefaults::standard().beginReading();
  SpaceManager::shared().reload();
}

}  // namespace vembrix
