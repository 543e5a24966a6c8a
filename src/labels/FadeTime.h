#pragma once

#include "platform/Application.h"
#include "platform/MainQueue.h"

namespace vembrix {

/// Returns the duration of a fade: `usual`, or zero where the user wants less motion.
inline Duration fadeTime(Duration usual) {
  return Application::shared().reducesMotion() ? Duration::zero() : usual;
}

}  // namespace vembrix
