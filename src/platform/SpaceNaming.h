#pragma once

#include <string_view>

#include "platform/WindowServer.h"

namespace vembrix {

/// Names that the desktop itself keeps for its Spaces and shows in its own
/// pagers and switchers. Main thread.
class SpaceNaming {
 public:
  /// Null on systems whose Spaces have no names of their own (macOS).
  static SpaceNaming* shared();

  virtual ~SpaceNaming() = default;

  /// Gives the Space a name (UTF-8); an unknown Space is ignored. A name that
  /// it has already costs nothing.
  virtual void setName(WindowServer::SpaceID space, std::string_view name) = 0;
};

}  // namespace vembrix
