#pragma once

#include <functional>
#include <string_view>

#include "platform/Token.h"

namespace vembrix {

/// Names of the notifications that the system itself posts.
namespace notification {
/// Workspace center: the active Space changed, or the set of Spaces did.
inline constexpr std::string_view kActiveSpaceDidChange =
    "NSWorkspaceActiveSpaceDidChangeNotification";
/// Workspace center: the machine woke from sleep.
inline constexpr std::string_view kDidWake = "NSWorkspaceDidWakeNotification";
/// Default center: screens were added, removed, moved or resized.
inline constexpr std::string_view kScreenParametersDidChange =
    "NSApplicationDidChangeScreenParametersNotification";
/// Distributed center: the system switched between light and dark.
inline constexpr std::string_view kInterfaceThemeChanged = "AppleInterfaceThemeChangedNotification";
}  // namespace notification

/// Ends the observation when it is dropped.
using Observation = Token;

/// Named notifications with no object and no user info. Main thread only.
class NotificationCenter {
 public:
  /// The process's own center.
  static NotificationCenter& defaultCenter();
  /// The shared workspace's: notifications of the desktop.
  static NotificationCenter& workspace();
  /// Notifications of other processes in the session. Delivered on the main queue.
  static NotificationCenter& distributed();

  virtual ~NotificationCenter() = default;

  /// Calls the handler for every later post of the name, in the order in which
  /// the observers were added, until the token is dropped. A handler may post,
  /// add and drop observations, its own included: an observation dropped during
  /// a post is not called any more, one added is called from the next post on.
  [[nodiscard]] virtual Observation addObserver(std::string_view name,
                                                std::function<void()> handler) = 0;

  /// Calls the observers before it returns (the distributed center: soon).
  virtual void post(std::string_view name) = 0;
};

}  // namespace vembrix
