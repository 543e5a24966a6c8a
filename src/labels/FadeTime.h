#pragma once

#include "platform/Application.h"
#include "platform/MainQueue.h"

namespace vembrix {

/// How long a fade takes that usually takes so long: no time where the user wants less
/// motion.
inline Duration fadeTime(Duration usual) {
  return Application::shared().reducesMotion() ? Duration::zero() : usual;
}

}  // namespace vembrix
