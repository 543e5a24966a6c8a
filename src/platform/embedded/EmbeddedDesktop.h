#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
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
#include "platform/embedded/Dock.h"
#include "platform/embedded/EmbeddedInput.h"
#include "platform/embedded/EventStream.h"
#include "platform/embedded/SpaceWindows.h"

namespace vembrix {

/// A whole desktop inside the process: displays, Spaces, a Dock that answers
/// swipes, Mission Control, input, the user's permission for Accessibility,
/// light and dark. A test (or a program without a screen)
/// drives it through this class as a user drives a real one; the product sees
/// it through the services at the end, and hears of changes by the system's own
/// notifications. Main thread only.
///
/// It starts with one display "Main" of 1440 x 900 points and four ordinary
/// Spaces, of which the first is active.
class EmbeddedDesktop {
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

  /// The desktop that the services of the embedded platform show.
  static EmbeddedDesktop& shared();

  EmbeddedDesktop();
  ~EmbeddedDesktop();
  EmbeddedDesktop(const EmbeddedDesktop&) = delete;
  EmbeddedDesktop& operator=(const EmbeddedDesktop&) = delete;

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

  /// Adds a Space at the end of the display's list; its id. An empty uuid is
  /// replaced by one of the desktop's own.
  SpaceID addSpace(std::string_view display, SpaceType type = SpaceType::Desktop,
                   std::string uuid = {});
  /// Removes a Space; a neighbour takes the place of one that was current. The
  /// last Space of a display stays.
  void removeSpace(SpaceID space);
  /// Moves a Space to another place (from 0) in its display's list.
  void moveSpace(SpaceID space, std::size_t position);
  /// Adds or removes ordinary Spaces at the end of the first display's list
  /// until it has that many, with one announcement at the most. Unlike a user,
  /// this may leave a display without any.
  void setSpaceCount(std::size_t count);
  /// The user goes to the Space: it becomes current on its display, its display
  /// becomes the active one, and kActiveSpaceDidChange is posted. Going to the
  /// active or an unknown Space does nothing.
  void activate(SpaceID space);
  void setAnnouncesSpaces(bool announces) { announcesSpaces_ = announces; }

  /// 0 when there is none.
  SpaceID activeSpace() const;
  /// The ids on all displays, in the window server's order.
  std::vector<SpaceID> spaceIDs() const;
  /// The id of the Space at that place (from 0) of the first display's list.
  SpaceID spaceAt(std::size_t position) const;

  // The Dock and the user's hands. A swipe of the user, or one that the process
  // posts, moves the active display to the neighbouring Space when the slide is
  // over; a swipe that begins during a slide ends the slide first. Nothing
  // happens at the ends of the list.

  /// The devices, and who watches them.
  EmbeddedInput& input() { return input_; }
  /// The session's gesture events.
  EventStream& events() { return events_; }
  /// An event that this process posts (null when refused), and a tap on all events, as
  /// the seam has them: they need the permission.
  std::unique_ptr<DockSwipeEvent> makeSwipeEvent();
  std::unique_ptr<EventTap> makeTap(EventTap::Handler handler);
  /// The user swipes on the trackpad, all at once.
  void swipe(Dock::Direction direction);
  /// Gives no event for that many of the next swipe events that this process asks for.
  void refuseSwipeEvents(int count) { eventsToRefuse_ = count; }
  /// Gives no tap, permission or not.
  void refuseTaps() { refusesTaps_ = true; }
  /// How long Spaces slide after a swipe has ended; 200 ms at first.
  void setTransitionTime(Duration time) { transitionTime_ = time; }
  /// The Dock does not notice that many of the next swipes.
  void loseSwipes(int count) { swipesToLose_ = count; }
  /// Swipes that moved the user, or came to the end of the list.
  int completedSwipes() const { return completedSwipes_; }

  /// Opens or closes Mission Control, for which the Dock covers every display.
  void setMissionControl(bool open) { missionControl_ = open; }
  /// The windows of all programs, this one's included, and the Spaces that hold them.
  SpaceWindows& windows() { return windows_; }
  /// Another program opens a window in the active Space, in the top left corner of the
  /// primary display.
  void addWindow(std::string owner, Size size);
  /// What the window list answers in place of the truth.
  void overrideWindowList(std::optional<PropertyList> answer) {
    windowListOverride_ = std::move(answer);
  }

  // What the window server answers, in place of the truth; nothing for the
  // truth again. Not announced.

  void overrideManagedDisplaySpaces(std::optional<PropertyList> answer);
  void overrideActiveSpace(std::optional<SpaceID> answer);
  void overrideSpacesForWindows(std::optional<PropertyList> answer) {
    windowSpacesOverride_ = std::move(answer);
  }

  /// Whether windows can be put into Spaces and taken out of them; at first they can.
  void setCanPlaceWindows(bool can) { canPlaceWindows_ = can; }

  /// What a program has just asked of the window server about windows in Spaces. The
  /// lists are valid during the call.
  struct WindowSpacesCall {
    enum class Kind { Add, Remove, Copy };
    Kind kind{};
    std::span<const WindowServer::WindowNumber> windows;
    /// None for a question.
    std::span<const SpaceID> spaces;
  };
  /// Told of each such call before it is carried out; empty for nobody.
  void watchWindowSpaces(std::function<void(const WindowSpacesCall&)> watcher) {
    windowSpacesWatcher_ = std::move(watcher);
  }

  // The user's permission and the look of the system.

  void setTrusted(bool trusted) { trusted_ = trusted; }
  /// How often the user was asked for the permission.
  int promptCount() const { return promptCount_; }
  /// Posts kInterfaceThemeChanged where it changes; nothing: it does not tell.
  void setAppearance(std::optional<Appearance> appearance);
  std::optional<Appearance> appearance() const { return appearance_; }

  /// Posts kDidWake.
  void wake();

  /// The desktop names the Space by itself, as a window manager does that starts.
  void setOwnName(SpaceID space, std::string_view name);
  /// The user names the Space in the desktop's own settings.
  void renameElsewhere(SpaceID space, std::string_view name);
  /// The name that the program gave the desktop's Space, or empty.
  std::string publishedName(SpaceID space) const;
  /// How often a name was given that was another than before.
  int publishCount() const { return publishCount_; }

  // The desktop as services.

  Accessibility& accessibility();
  Screens& screens();
  SpaceNaming& spaceNaming();
  WindowServer& windowServer();

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
  /// The windows of Spaces that are gone move to that one.
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
  void swipeCompleted(Dock::Direction direction, Dock::Arrival arrival);
  void endTransition();

  std::vector<DisplayState> displays_;
  std::size_t activeDisplay_ = 0;
  SpaceID nextSpaceID_ = 1;
  std::optional<PropertyList> answerOverride_;
  std::optional<SpaceID> activeOverride_;
  std::optional<PropertyList> windowSpacesOverride_;
  std::function<void(const WindowSpacesCall&)> windowSpacesWatcher_;
  /// The truth as the window server would tell it; null when to be made anew.
  PropertyList answer_;

  bool announcesSpaces_ = false;
  bool canPlaceWindows_ = true;
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
  int eventsToRefuse_ = 0;
  bool refusesTaps_ = false;
  int swipesToLose_ = 0;
  int completedSwipes_ = 0;
  /// Held while Spaces slide.
  WorkItem transition_;
  SpaceID transitionTarget_ = 0;

  SpaceWindows windows_{[this] { return activeSpace(); }};
  std::optional<PropertyList> windowListOverride_;

  std::unique_ptr<AccessibilityService> accessibility_;
  std::unique_ptr<ScreensService> screens_;
  std::unique_ptr<SpaceNamingService> spaceNaming_;
  std::unique_ptr<WindowServerService> windowServer_;
};

}  // namespace vembrix
