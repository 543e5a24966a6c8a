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
#include "platform/linux/x11/DesktopNames.h"
#include "platform/linux/x11/X11EventReader.h"
#include "platform/portable/SpaceWindows.h"

namespace vembrix {

/// The desktops of an EWMH window manager as Spaces of one display "Main". The desktop of index N
/// is the Space N + 1 with the identifier "x11-desktop-(N + 1)"; where the window manager names its
/// desktops, which then come and go, the name identifies a desktop: its id stays while the program
/// runs, its identifier is "x11-name-" and the name. The X server's events keep this model up to
/// date; reading it costs no round trip. Main thread.
///
/// The root window's properties are not trusted: any client may write them, and a killed window
/// manager leaves its own behind. Without a running window manager there are no Spaces.
///
/// notification::kActiveSpaceDidChange on the workspace center reports changes, once per batch of
/// events. The loss of the server ends the program.
class X11Desktop {
 public:
  using SpaceID = WindowServer::SpaceID;

  /// The only display's identifier.
  static constexpr std::string_view kDisplay = "Main";
  /// Desktops beyond this number are ignored, so that a wrong number does not fill the memory.
  static constexpr std::uint32_t kMaxDesktops = 1024;

  explicit X11Desktop(std::unique_ptr<X11Connection> connection);
  ~X11Desktop();
  X11Desktop(const X11Desktop&) = delete;
  X11Desktop& operator=(const X11Desktop&) = delete;

  /// Starts to follow the desktop; needs a Qt application.
  void follow();
  /// The display's events, for other listeners.
  [[nodiscard]] X11EventReader& events() { return events_; }

  /// Waits, without an event loop, at most for `limit` until there are Spaces. Returns whether
  /// there are.
  bool waitForSpaces(std::chrono::milliseconds limit);
  /// Returns whether the X server belongs to a Wayland session. Asks the server and waits.
  [[nodiscard]] bool isXwayland() const;

  /// The list in the form of WindowServer; null without a window manager that has desktops. Copies
  /// share their contents while the list does not change.
  [[nodiscard]] const PropertyList& managedDisplaySpaces() const { return answer_; }
  /// 0 if unknown.
  [[nodiscard]] SpaceID activeSpace() const;
  /// The number of Spaces; empty without a window manager that has desktops.
  [[nodiscard]] std::optional<std::uint32_t> spaceCount() const;
  [[nodiscard]] bool isKnown(SpaceID space) const;
  /// The ids of all Spaces, in order.
  [[nodiscard]] std::vector<SpaceID> spaceIDs() const;

  /// Asks the window manager to go to the Space. Returns whether it was asked; unknown Spaces are
  /// ignored.
  bool activate(SpaceID space);

  /// Returns the Space `places` further in the list; 0 if there is none.
  [[nodiscard]] SpaceID spaceBeside(SpaceID space, int places) const;

  /// The program's own windows in Spaces, which the window manager does not manage. Those of a
  /// vanished Space move to the active one.
  [[nodiscard]] SpaceWindows& windows() { return windows_; }

  /// Writes the Space's name where pagers read it. An unknown Space is ignored; an unchanged name
  /// costs nothing.
  void setName(SpaceID space, std::string_view name);
  /// Undoes setName(): restores the window manager's own name, or `fallback`.
  void clearName(SpaceID space, std::string_view fallback);
  /// The window manager's own name, or empty.
  [[nodiscard]] std::string_view ownName(SpaceID space) const;
  void setNameHandlers(SpaceNaming::Handlers handlers) { nameHandlers_ = std::move(handlers); }

 private:
  /// The announced state.
  struct Shown {
    bool known = false;
    /// Number of the list of Spaces, increased with each new one.
    int list = 0;
    SpaceID active = 0;
    bool operator==(const Shown&) const = default;
  };
  /// Values that have changed on the server since they were read.
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
  /// Takes the names that were read but held back.
  void takePendingNames();
  void writeNames();
  /// Updates the Spaces from the server's values, unless its names still belong to another list of
  /// desktops.
  void rebuildSpaces();
  [[nodiscard]] bool awaitsNames() const;
  void rebuildAnswer();
  [[nodiscard]] Shown shown() const;
  /// The index in the list.
  [[nodiscard]] std::optional<std::uint32_t> indexOf(SpaceID space) const;
  /// Returns the lasting id of the desktop of that name.
  SpaceID idOfName(const std::string& name);

  X11EventReader events_;
  X11Connection& connection_ = events_.connection();
  Token listening_;
  bool isFollowing_ = false;

  // The server's values; empty where absent or malformed.
  std::optional<std::uint32_t> count_;
  std::optional<std::uint32_t> current_;
  /// An index into `spaces_`.
  std::optional<std::uint32_t> active_;
  DesktopNames names_;
  bool hasWindowManager_ = false;
  bool hasName_ = false;
  /// Whether names, which the window manager keeps, identify the desktops.
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
  /// Changed names that are held back. The user may have given them, or a restarting window
  /// manager, which writes its names before or after it announces itself.
  std::optional<std::vector<std::string>> pendingNames_;
  WorkItem pendingNamesDue_;
  /// The time until which a window manager that is new, or has changed its number of desktops, may
  /// not have written their names.
  Clock::time_point namesBy_;
  WorkItem namesDue_;
  /// The time until which names that change are the window manager's own.
  Clock::time_point settledAt_;

  Shown announced_;
  SpaceWindows windows_{[this] { return activeSpace(); }};
  PropertyList answer_;
};

}  // namespace vembrix
