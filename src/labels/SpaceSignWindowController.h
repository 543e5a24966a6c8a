#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "labels/Sign.h"
#include "platform/DockSwipeEvent.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/Screens.h"
#include "platform/TourOverlay.h"
#include "platform/WindowServer.h"
#include "spaces/SpaceInfo.h"
#include "watchers/SpaceHeatTracker.h"

namespace vembrix {

/// Keeps a label in every ordinary desktop and decides when it is visible; full-screen Spaces have
/// none. A label exists from the first time that its desktop becomes active, or is about to, until
/// the desktop vanishes; its alpha value alone controls its visibility. At rest the labels of the
/// other desktops are faint, so that they are drawn before a swipe or Mission Control shows them,
/// and the active desktop's is invisible.
///
/// Created after launch; lives as long as the process. Main thread.
class SpaceSignWindowController : public std::enable_shared_from_this<SpaceSignWindowController> {
 public:
  /// Also creates the active desktop's label.
  static std::shared_ptr<SpaceSignWindowController> create();

  /// Shows the labels of the other desktops after half a second, for 15 s or until the user touches
  /// one or goes to another desktop. A repeated call starts the 15 s again.
  void showAll();

  /// To be called when the user begins to swipe to the next or the previous desktop.
  void handleSwipeBegan(ISSDirection direction);

 private:
  using SpaceID = WindowServer::SpaceID;

  SpaceSignWindowController() = default;
  void start();
  void observe();

  // Labels and their places

  /// Creates or updates the label of the active Space; does nothing unless that is an ordinary
  /// desktop.
  void ensureSignForActiveSpace();
  /// Creates a label in the active Space, in front of the others.
  Sign& makeSign(const SpaceInfo& space, IncludingActive includingActive, double alpha);
  /// Returns the screen of labels and the tour's overlay: the main screen, else the first one. Ends
  /// the program if there is none, as a running desktop always has one. Valid until the next event.
  static const Screen& signScreen();
  /// Returns a frame of the size that the name needs, in the middle of that screen.
  static Rect signFrame(std::string_view text);
  /// Resizes the label of every listed Space to its present name.
  void layOutSigns();
  static void pinWindow(const SignWindow& window, SpaceID space);
  /// Moves every label that is not in its own Space alone back there.
  void reconcileWindowSpaces();
  static void reconcile(const SignWindow& window, SpaceID space);
  void startPrimeTimer();
  void primeTimerFired();
  /// Gives every label its present alpha value.
  void primeNonActiveSigns();
  void spacesChanged();
  void prefsDidChange();

  // Visibility

  /// Returns the duration of a fade: `usual`, or zero if the user wants less motion.
  static Duration fadeTime(Duration usual);
  void hideAll();
  void flashActiveSign();
  /// Hides the label of the Space in which the user has arrived.
  void endArrival(SpaceID space);
  void activeChanged();
  void missionControlChanged();
  void refreshHeat();
  void startMouseMonitor();
  void mouseMoved();
  [[nodiscard]] Sign* activeSign();
  void setAlphaOfAllBut(SpaceID exception, double alpha);

  // The tour

  void tourWillStart();
  void tourDidEnd();
  void showTourOverlay();
  void hideTourOverlay();

  std::unordered_map<SpaceID, Sign> windows_;
  WorkItem hideWorkItem_;
  WorkItem flashWorkItem_;
  /// Hides the active label if it does not fade.
  WorkItem vanishWorkItem_;
  Token mouseMonitor_;
  /// Whether all labels are shown on purpose.
  bool isShowing_ = false;
  TimerSource primeTimer_;
  /// Spaces whose labels the user has dismissed.
  std::unordered_set<SpaceID> dismissedSpaceIDs_;
  bool isTouring_ = false;
  std::unique_ptr<TourOverlay> tourOverlayWindow_;
  Token activityToken_;
  std::int64_t primeTick_ = 0;
  std::array<Observation, 10> observations_;
};

}  // namespace vembrix
