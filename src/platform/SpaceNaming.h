#pragma once

#include <functional>
#include <string_view>

#include "platform/WindowServer.h"

namespace vembrix {

/// Names that the desktop itself keeps for its Spaces and shows in its own
/// pagers and switchers. UTF-8. Main thread.
class SpaceNaming {
 public:
  using SpaceID = WindowServer::SpaceID;

  /// Called from the event loop when others change names; either may be empty.
  struct Handlers {
    /// The user renamed the Space elsewhere, in the desktop's settings or a pager. An empty name
    /// means that it was removed.
    std::function<void(SpaceID space, std::string_view name)> renamed;
    /// The desktop's own names changed, or names that were set are gone with the window manager
    /// that kept them.
    std::function<void()> ownNamesChanged;
  };

  /// Null on systems whose Spaces have no names of their own (macOS).
  static SpaceNaming* shared();

  virtual ~SpaceNaming() = default;

  virtual void setHandlers(Handlers handlers) = 0;

  /// Returns the desktop's own name of the Space, regardless of the user's; empty where it has none
  /// or the name or the Space is unknown. Valid until the next event.
  [[nodiscard]] virtual std::string_view ownName(SpaceID space) const = 0;

  /// Shows the user's name in place of the desktop's own. Does nothing for an unknown Space, on a
  /// desktop that takes no names, or if the name is set already.
  virtual void setName(SpaceID space, std::string_view name) = 0;

  /// Undoes setName(): restores the desktop's own name, or `fallback` if that is unknown.
  virtual void clearName(SpaceID space, std::string_view fallback) = 0;
};

}  // namespace vembrix
