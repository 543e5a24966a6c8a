#include "platform/embedded/services/EmbeddedBundle.h"

namespace vembrix {

EmbeddedBundle& EmbeddedBundle::shared() {
  static EmbeddedBundle bundle;
  return bundle;
}

}  // namespace vembrix
