#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/MainQueue.h"
#include "platform/PropertyList.h"
#include "platform/Screens.h"
#include "platform/SpaceNaming.h"
#include "platform/WindowServer.h"
#include "platform/embedded/desktop/EmbeddedInput.h"
#include "platform/portable/DesktopServices.h"
#include "platform/portable/Dock.h"
#include "platform/portable/EventStream.h"
#include "platform/portable/SpaceWindows.h"

namespace vembrix {

/// A whole desktop inside the process: displays, Spaces, a Dock that answers swipes, Mission
/// Control, input, the user's permission for Accessibility, light and dark. A test (or a program
/// without a screen) drives it through this class as a user drives a real one; the product uses it
/// through the services and the system's own notifications. Main thread only.
///
/// Initially there is one display "Main" of 1440 x 900 points with four ordinary Spaces, the first
/// of them active.
class EmbeddedDesktop : public DesktopServices {
 public:
  using SpaceID = WindowServer::SpaceID;

  /// Types of Spaces as the window server numbers them.
  enum class SpaceType : std::int64_t { Desktop = 0, FullScreen = 4 };

  struct Display {
    std::string identifier;
    /// Points, global coordinates; the first display is the primary one and
    /// has its origin at (0, 0).
    Rect frame;
    /// Pixels per point.
    double scale = 1;
    /// Height of the menu bar, which the visible frame leaves out.
    double menuBarHeight = 24;
  };

  /// The process's desktop, which the linked platform makes.
  static EmbeddedDesktop& shared();

  EmbeddedDesktop();
  ~EmbeddedDesktop() override;

  // Displays. Each change posts kScreenParametersDidChange.

  /// Adds a display with one ordinary Space, which is current there.
  void addDisplay(Display display);
  /// Removes a display with its Spaces; if it held the active Space, the first
  /// display's current Space becomes active.
  void removeDisplay(std::string_view identifier);
  void setDisplayFrame(std::string_view identifier, const Rect& frame);

  // Spaces. As on the real system, adding, removing and moving Spaces is not
  // announced unless another Space becomes active by it; setAnnouncesSpaces()
  // makes it announce each such change, as other desktops do.

  /// Adds a Space at the end of the display's list and returns its id. An empty uuid is replaced by
  /// a generated one.
  SpaceID addSpace(std::string_view display, SpaceType type = SpaceType::Desktop,
                   std::string uuid = {});
  /// Removes a Space; a neighbour takes the place of one that was current. The
  /// last Space of a display stays.
  void removeSpace(SpaceID space);
  /// Moves a Space to another place (from 0) in its display's list.
  void moveSpace(SpaceID space, std::size_t position);
  /// Adds or removes ordinary Spaces at the end of the first display's list until it has that many,
  /// with at most one announcement. Unlike a user, it may leave a display without any.
  void setSpaceCount(std::size_t count);
  /// Makes the Space current on its display and that display active, and posts
  /// kActiveSpaceDidChange. Does nothing for the active or an unknown Space.
  void activate(SpaceID space);
  void setAnnouncesSpaces(bool announces) { announcesSpaces_ = announces; }

  /// 0 if there is none.
  SpaceID activeSpace() const;
  /// The ids on all displays, in the window server's order.
  std::vector<SpaceID> spaceIDs() const;
  /// The id of the Space at that index of the first display's list.
  SpaceID spaceAt(std::size_t position) const;

  // The Dock and swipes. A swipe of the user, or one that the process posts, moves the active
  // display to the neighbouring Space at the end of the slide; a swipe that begins during a slide
  // ends the slide first. A swipe past either end of the list has no effect.

  /// The devices and their monitors.
  EmbeddedInput& input() override { return input_; }
  /// The session's gesture events.
  EventStream& events() { return events_; }
  /// Performs a whole swipe of the user on the trackpad.
  void swipe(ISSDirection direction);
  /// Sets how long Spaces slide after a swipe has ended; initially 200 ms.
  void setTransitionTime(Duration time) { transitionTime_ = time; }

  /// Opens or closes Mission Control, during which the Dock covers every display.
  void setMissionControl(bool open) { missionControl_ = open; }
  /// The windows of all programs, this one's included, and the Spaces that hold them.
  SpaceWindows& windows() override { return windows_; }
  /// Another program opens a window in the active Space, in the top left corner of the
  /// primary display.
  void addWindow(std::string owner, Size size);

  // The user's permission and the look of the system.

  void setTrusted(bool trusted) { trusted_ = trusted; }
  /// Number of times that the user was asked for the permission.
  int promptCount() const { return promptCount_; }
  /// Posts kInterfaceThemeChanged on a change; empty for a system that does not report its
  /// appearance.
  void setAppearance(std::optional<Appearance> appearance);
  std::optional<Appearance> appearance() const { return appearance_; }

  /// Posts kDidWake.
  void wake();

  /// Names the Space for the desktop itself, as a starting window manager does.
  void setOwnName(SpaceID space, std::string_view name);
  /// Names the Space for the user, in the desktop's own settings.
  void renameElsewhere(SpaceID space, std::string_view name);
  /// The name that the program gave the desktop's Space, or empty.
  std::string publishedName(SpaceID space) const;
  /// Number of times that a published name has changed.
  int publishCount() const { return publishCount_; }

  // The desktop as services. Events to post and taps need the permission.

  Accessibility& accessibility() override;
  const Screens& screens() override;
  SpaceNaming& spaceNaming() override;
  WindowServer& windowServer() override;
  std::unique_ptr<DockSwipeEvent> makeSwipeEvent() override;
  std::unique_ptr<EventTap> makeTap(EventTap::Handler handler) override;

 protected:
  /// Moves the active display to the neighbouring Space, as the Dock does when a swipe has ended.
  virtual void swipeCompleted(ISSDirection direction, Dock::Arrival arrival);

 private:
  struct Space {
    SpaceID id = 0;
    std::string uuid;
    SpaceType type = SpaceType::Desktop;
  };
  struct DisplayState {
    Display display;
    std::vector<Space> spaces;
    SpaceID current = 0;
  };
  class AccessibilityService;
  class ScreensService;
  class SpaceNamingService;
  class WindowServerService;

  DisplayState* findDisplay(std::string_view identifier);
  DisplayState* displayOf(SpaceID space);
  Space makeSpace(SpaceType type, std::string uuid);
  static void repairCurrent(DisplayState& state, std::size_t formerIndex);
  /// Moves the windows of vanished Spaces to `refuge`.
  void rehouseWindows(SpaceID refuge);
  [[nodiscard]] bool isKnown(SpaceID space) const;
  /// The Spaces that are current, each on its display.
  [[nodiscard]] std::vector<SpaceID> currentSpaces() const;
  /// After a change of Spaces: forgets the cached answer and announces the
  /// change where the active Space is no longer `formerActive`.
  void spacesChanged(SpaceID formerActive);
  void displaysChanged();
  const PropertyList& managedDisplaySpaces();
  void switchDisplayTo(std::string_view display, SpaceID space);
  void publishName(SpaceID space, std::string_view name);
  PropertyList windowList() const;
  void endTransition();

  std::vector<DisplayState> displays_;
  std::size_t activeDisplay_ = 0;
  SpaceID nextSpaceID_ = 1;
  /// The cached answer of the window server; null when out of date.
  PropertyList answer_;

  bool announcesSpaces_ = false;
  bool trusted_ = true;
  bool missionControl_ = false;
  int promptCount_ = 0;
  int publishCount_ = 0;
  std::optional<Appearance> appearance_ = Appearance::Light;
  std::map<SpaceID, std::string> publishedNames_;
  std::map<SpaceID, std::string> ownNames_;
  SpaceNaming::Handlers nameHandlers_;
  std::vector<Screen> screenList_;

  Dock dock_;
  EventStream events_;
  EmbeddedInput input_;
  Duration transitionTime_ = std::chrono::milliseconds(200);
  /// Empty unless Spaces slide.
  WorkItem transition_;
  SpaceID transitionTarget_ = 0;

  SpaceWindows windows_{[this] { return activeSpace(); }};

  std::unique_ptr<AccessibilityService> accessibility_;
  std::unique_ptr<ScreensService> screens_;
  std::unique_ptr<SpaceNamingService> spaceNaming_;
  std::unique_ptr<WindowServerService> windowServer_;
};

}  // namespace vembrix
