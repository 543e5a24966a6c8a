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

  /// What others do to the names; either may be empty. Called from the event loop.
  struct Handlers {
    /// The user has given that one Space another name elsewhere, in the desktop's own
    /// settings or a pager. Empty where the name was taken away.
    std::function<void(SpaceID space, std::string_view name)> renamed;
    /// The desktop's own names are others than before, or names that were set are gone
    /// with the window manager that kept them.
    std::function<void()> ownNamesChanged;
  };

  /// Null on systems whose Spaces have no names of their own (macOS).
  static SpaceNaming* shared();

  virtual ~SpaceNaming() = default;

  virtual void setHandlers(Handlers handlers) = 0;

  /// What the desktop itself calls the Space, whatever the user calls it here; empty
  /// where it has no name, is unknown, or nobody knows. Valid until the next event.
  [[nodiscard]] virtual std::string_view ownName(SpaceID space) const = 0;

  /// Shows the user's name in place of the desktop's own. An unknown Space is ignored,
  /// and so is every name where the desktop takes none; a name that it has already costs
  /// nothing.
  virtual void setName(SpaceID space, std::string_view name) = 0;

  /// Ends setName(): brings the desktop's own name back, or `fallback` where that is
  /// unknown.
  virtual void clearName(SpaceID space, std::string_view fallback) = 0;
};

}  // namespace vembrix
