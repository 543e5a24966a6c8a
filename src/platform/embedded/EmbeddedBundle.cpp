#include "platform/embedded/EmbeddedBundle.h"

namespace vembrix {

EmbeddedBundle& EmbeddedBundle::shared() {
  static EmbeddedBundle bundle;
  return bundle;
}

}  // namespace vembrix
