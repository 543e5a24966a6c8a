#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "labels/Sign.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/TourOverlay.h"
#include "platform/WindowServer.h"
#include "spaces/SpaceInfo.h"
#include "watchers/SpaceHeatTracker.h"

namespace vembrix {

/// Keeps a label in every ordinary desktop and decides when it is seen; full-screen Spaces
/// have none. Labels are there from the first time that their desktop becomes active, or
/// is about to, until it vanishes; only their alpha value tells whether they are seen. At
/// rest those of the other desktops are faintly there, drawn before a swipe or Mission
/// Control shows them, and the active desktop's is not.
///
/// Made after launch, lives as long as the process. Main thread.
class SpaceSignWindowController : public std::enable_shared_from_this<SpaceSignWindowController> {
 public:
  /// The active desktop has its label when this returns.
  static std::shared_ptr<SpaceSignWindowController> create();

  /// Shows the labels of the other desktops: after half a second, for 15 s, or until
  /// the user touches one or goes to another desktop. Again: for another 15 s.
  void showAll();

  /// The user begins to swipe to the next desktop, or to the former.
  void handleSwipeBegan(bool isRight);

 private:
  using SpaceID = WindowServer::SpaceID;

  SpaceSignWindowController() = default;
  void start();
  void observe();

  // Labels and their places

  /// Unless the active Space is no ordinary desktop.
  void ensureSignForActiveSpace();
  /// A new label, in the active Space, in front of the others.
  Sign& makeSign(const SpaceInfo& space, IncludingActive includingActive, double alpha);
  /// In the middle of the main screen, as large as the name needs.
  static Rect signFrame(std::string_view text);
  /// Every label whose Space is listed gets the size that its name needs now.
  void layOutSigns();
  static void pinWindow(const SignWindow& window, SpaceID space);
  /// Looks whether every label is in its Space alone, and puts back those that are not.
  void reconcileWindowSpaces();
  static void reconcile(const SignWindow& window, SpaceID space);
  void startPrimeTimer();
  void primeTimerFired();
  /// Gives every label the alpha value that it has to have now.
  void primeNonActiveSigns();
  void spacesChanged();
  void prefsDidChange();

  // When they are seen

  void hideAll();
  void flashActiveSign();
  /// The label of the Space in which the user has arrived goes.
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
  /// Of the active label, where it does not fade.
  WorkItem vanishWorkItem_;
  Token mouseMonitor_;
  /// Whether all labels are shown on purpose.
  bool isShowing_ = false;
  TimerSource primeTimer_;
  /// Whose label the user has waved away.
  std::unordered_set<SpaceID> dismissedSpaceIDs_;
  bool isTouring_ = false;
  std::unique_ptr<TourOverlay> tourOverlayWindow_;
  Token activityToken_;
  std::int64_t primeTick_ = 0;
  std::array<Observation, 10> observations_;
};

}  // namespace vembrix
