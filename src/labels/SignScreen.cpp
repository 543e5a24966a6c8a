#include "labels/SignScreen.h"

#include "platform/SystemLog.h"

namespace vembrix {

const Screen& signScreen() {
  const Screens& screens = Screens::shared();
  if (const Screen* main = screens.mainScreen()) return *main;
  if (screens.all().empty()) programmingError("there is no screen for the labels");
  return screens.all().front();
}

}  // namespace vembrix
