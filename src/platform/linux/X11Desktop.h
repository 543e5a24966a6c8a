#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/PropertyList.h"
#include "platform/SpaceNaming.h"
#include "platform/WindowServer.h"
#include "platform/embedded/SpaceWindows.h"
#include "platform/linux/DesktopNames.h"
#include "platform/linux/X11EventReader.h"

namespace vembrix {

/// The desktops of an EWMH window manager as Spaces of one display "Main". The desktop of
/// index N is the Space N + 1 with the identifier "x11-desktop-(N + 1)"; where the window
/// manager names its desktops, which then come and go, a desktop is known by its name: its
/// id stays while the program runs, its identifier is "x11-name-" and the name. A model that the X
/// server's events keep up to date; reading it asks the server nothing. Main thread.
///
/// What stands in the properties of the root window is not trusted: any client
/// may write it, and a window manager that was killed leaves its own behind.
/// Without a running window manager there are no Spaces.
///
/// Changes are told by notification::kActiveSpaceDidChange on the workspace
/// center, once for all that came in together. A server that goes away ends the
/// program.
class X11Desktop {
 public:
  using SpaceID = WindowServer::SpaceID;

  /// The only display's identifier.
  static constexpr std::string_view kDisplay = "Main";
  /// A longer list of desktops is cut off here: nobody uses more, and a number
  /// by mistake must not fill the memory.
  static constexpr std::uint32_t kMaxDesktops = 1024;

  explicit X11Desktop(std::unique_ptr<X11Connection> connection);
  ~X11Desktop();
  X11Desktop(const X11Desktop&) = delete;
  X11Desktop& operator=(const X11Desktop&) = delete;

  /// Follows the desktop from now on; needs a Qt application.
  void follow();
  /// What happens on the display, for others to listen to as well.
  [[nodiscard]] X11EventReader& events() { return events_; }

  /// Waits, without an event loop, until there are Spaces, at most for `limit`.
  /// Whether there are.
  bool waitForSpaces(std::chrono::milliseconds limit);
  /// Whether the X server is that of a Wayland session, whose compositor alone says
  /// whether there are desktops. Asks the server and waits.
  [[nodiscard]] bool isXwayland() const;

  /// As WindowServer tells it: null without a window manager that has desktops.
  /// The contents are shared while the list does not change.
  [[nodiscard]] const PropertyList& managedDisplaySpaces() const { return answer_; }
  /// 0 when unknown.
  [[nodiscard]] SpaceID activeSpace() const;
  /// How many Spaces there are; nothing without a window manager that has any.
  [[nodiscard]] std::optional<std::uint32_t> spaceCount() const;
  [[nodiscard]] bool isKnown(SpaceID space) const;
  /// Of all Spaces, in their order.
  [[nodiscard]] std::vector<SpaceID> spaceIDs() const;

  /// Asks the window manager to go to the Space; an unknown one is ignored.
  /// Whether it was asked.
  bool activate(SpaceID space);

  /// The Space so many places further in the list; 0 where there is none.
  [[nodiscard]] SpaceID spaceBeside(SpaceID space, int places) const;

  /// The program's own windows that stand in Spaces, of which the window manager knows
  /// nothing. Those of a Space that vanishes are in the active one from then on.
  [[nodiscard]] SpaceWindows& windows() { return windows_; }

  /// Writes the Space's name where pagers read it; the others keep theirs. An
  /// unknown Space is ignored, a name that it has already costs nothing.
  void setName(SpaceID space, std::string_view name);
  /// Takes that name back: the window manager's own stands there again, or `fallback`.
  void clearName(SpaceID space, std::string_view fallback);
  /// The window manager's own name, or empty.
  [[nodiscard]] std::string_view ownName(SpaceID space) const;
  void setNameHandlers(SpaceNaming::Handlers handlers) { nameHandlers_ = std::move(handlers); }

 private:
  /// The state that others are told of.
  struct Shown {
    bool known = false;
    /// Counts the lists that there have been.
    int list = 0;
    SpaceID active = 0;
    bool operator==(const Shown&) const = default;
  };
  /// What has changed on the server since it was read.
  struct Stale {
    bool windowManager = false;
    bool count = false;
    bool current = false;
    bool names = false;
    [[nodiscard]] bool any() const { return windowManager || count || current || names; }
  };
  using Clock = std::chrono::steady_clock;

  void note(const xcb_generic_event_t& event);
  void notePropertyChange(const xcb_property_notify_event_t& event);
  /// Brings the model up to date and announces the change.
  void finishBatch();

  void refresh();
  void refreshWindowManager();
  void followCheckWindow(xcb_window_t window);
  [[nodiscard]] xcb_get_property_cookie_t requestNames();
  [[nodiscard]] std::vector<std::string> readNames(xcb_get_property_cookie_t cookie);
  void takeNames(std::vector<std::string> names);
  /// Takes those that were read last and not taken yet.
  void takePendingNames();
  void writeNames();
  /// Brings the Spaces up to date with what the server has, unless its names are those of
  /// another list of desktops and others may come.
  void rebuildSpaces();
  [[nodiscard]] bool awaitsNames() const;
  void rebuildAnswer();
  [[nodiscard]] Shown shown() const;
  /// The place in the list.
  [[nodiscard]] std::optional<std::uint32_t> indexOf(SpaceID space) const;
  /// The id that the desktop of that name has and keeps.
  SpaceID idOfName(const std::string& name);

  X11EventReader events_;
  X11Connection& connection_ = events_.connection();
  Token listening_;
  bool isFollowing_ = false;

  // As the server has it; nothing: absent or malformed.
  std::optional<std::uint32_t> count_;
  std::optional<std::uint32_t> current_;
  /// In `spaces_`.
  std::optional<std::uint32_t> active_;
  DesktopNames names_;
  bool hasWindowManager_ = false;
  bool hasName_ = false;
  /// Desktops are known by their names, which the window manager keeps.
  bool isKnownByNames_ = false;
  /// The window whose existence proves that the window manager runs.
  xcb_window_t checkWindow_ = XCB_WINDOW_NONE;
  Stale stale_{true, true, true, true};

  struct Space {
    SpaceID id = 0;
    std::string uuid;
    bool operator==(const Space&) const = default;
  };
  /// In the window manager's order.
  std::vector<Space> spaces_;
  int listCount_ = 0;
  std::map<std::string, SpaceID, std::less<>> idsOfNames_;

  SpaceNaming::Handlers nameHandlers_;
  /// Names that may be the user's doing: a window manager that restarts writes them before
  /// or after it says that it is there.
  std::optional<std::vector<std::string>> pendingNames_;
  WorkItem pendingNamesDue_;
  /// Until then a window manager that has come, or has another number of desktops, may
  /// not have told what they are called.
  Clock::time_point namesBy_;
  WorkItem namesDue_;
  /// Until then the names that change are the window manager's own.
  Clock::time_point settledAt_;

  Shown announced_;
  SpaceWindows windows_{[this] { return activeSpace(); }};
  PropertyList answer_;
};

}  // namespace vembrix
