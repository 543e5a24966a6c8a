#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "labels/SignModelDesktop.h"
#include "platform/DockSwipeEvent.h"
#include "platform/EventTap.h"
#include "platform/Geometry.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/SignWindow.h"
#include "platform/Token.h"

namespace vembrix {

/// A second, independent implementation of the rules for labels, as simple as possible: one
/// function per event, one statement per rule. Ignores how often a window is changed and what that
/// costs.
///
/// It receives the same events of the embedded desktop as the product, right after it, and uses the
/// same queue, so that both agree whenever no block runs. Changes of names, menus and windows that
/// no event reports must be passed to it.
class SignModel {
 public:
  using SpaceID = model::SpaceID;

  /// An alpha value, at rest or in a linear fade.
  struct Alpha {
    double from = 1;
    double to = 1;
    Duration begin{};
    Duration end{};
  };

  struct Label {
    std::string text;
    double textSize = 0;
    Rect frame;
    Alpha alpha;
    std::uint64_t behavior = 0;
    double heat = 0;
    SignLook look;
    /// The Spaces that hold the window.
    std::set<SpaceID> spaces;
    /// Number of requested redraws.
    int displays = 0;
  };

  /// The panel that covers the tour, until it is ordered out.
  struct Overlay {
    Rect frame;
    Alpha alpha;
  };

  /// Counts of the interesting events.
  struct Census {
    int risenShows = 0;
    int showsEndedByTime = 0;
    int showsEndedByTouch = 0;
    int showsEndedByArrival = 0;
    int arrivalFades = 0;
    int wavedAway = 0;
    int neighborsMade = 0;
    int fullScreenVisits = 0;
    int labelsDropped = 0;
    int putBack = 0;
    int toursBegun = 0;
    int missionControls = 0;
    int fullRecencies = 0;
    std::size_t mostLabels = 0;
  };

  /// To be created before the program launches, so that the user's swipes reach it.
  SignModel();
  SignModel(const SignModel&) = delete;
  SignModel& operator=(const SignModel&) = delete;

  /// To be called after the program's launch, before the queue runs.
  void begin();

  // Changes that no event reports

  /// The dropdown was opened: the Spaces are read again.
  void menuOpened() { reload(); }
  void renamed(const std::string& uuid, std::string_view name);
  /// To be called when the window server has moved the label's window to these Spaces.
  void windowMoved(SpaceID label, std::set<SpaceID> spaces);

  // The expected state

  [[nodiscard]] const std::map<SpaceID, Label>& labels() const { return labels_; }
  [[nodiscard]] const std::vector<std::shared_ptr<Overlay>>& overlays() const { return overlays_; }
  /// The most recent first.
  [[nodiscard]] const std::vector<std::string>& recency() const { return recency_; }
  [[nodiscard]] static double now(const Alpha& alpha);
  [[nodiscard]] const Census& census() const { return census_; }

 private:
  // Bits of both: in one Space, skipped when cycling through windows. The first may also be in the
  // Space of a full-screen window; Mission Control hides the second.
  static constexpr std::uint64_t managedBehavior = 4 + 64 + 256;
  static constexpr std::uint64_t transientBehavior = 8 + 64;

  // Spaces and names
  void reload();
  [[nodiscard]] const model::Space* find(SpaceID id) const;
  [[nodiscard]] const model::Space* active() const { return find(active_); }
  [[nodiscard]] std::vector<model::Space> desktops() const;
  [[nodiscard]] std::string nameOf(const model::Space& space) const;

  // The user's activity
  void lookForMissionControl();
  void mouseMoved();
  void mouseOverLabels();
  void mouseInCorner();
  void gesture(std::uint32_t type, const TappedEvent& event);
  void clickedOrTyped();
  [[nodiscard]] double heatOf(const std::string& uuid, bool includingActive) const;

  // Labels and their places
  Label& make(const model::Space& space, double heat, double alpha);
  void ensureLabelOfActiveSpace();
  static void layOut(Label& label, const std::string& name);
  void putBackStrayLabels();
  void spacesChanged();
  void screensChanged();
  void settingsChanged();
  void refreshHeat();
  static void tint(Label& label);
  static void addTo(Label& label, SpaceID space);

  // Visibility
  void tick();
  void prime();
  void showAll();
  void rise(SpaceID exception);
  void hideAll();
  void swipeBegan(ISSDirection direction);
  void activeChanged();
  void missionControlChanged();
  void tourWillStart();
  void tourDidEnd();
  void setOthers(double alpha);
  static void set(Label& label, double alpha);
  static void fade(Alpha& alpha, double to, Duration duration);

  std::vector<model::Space> spaces_;
  SpaceID active_ = 0;
  std::map<std::string, std::string> names_;
  std::vector<std::string> recency_;
  bool missionControl_ = false;
  bool cornerIsArmed_ = true;
  bool watchesSwipes_ = false;
  bool swipeIsKnown_ = false;

  std::map<SpaceID, Label> labels_;
  std::set<SpaceID> wavedAway_;
  bool isShowing_ = false;
  bool isTouring_ = false;
  int ticks_ = 0;
  WorkItem end_;
  WorkItem arrivalFade_;
  std::shared_ptr<Overlay> overlay_;
  std::vector<std::shared_ptr<Overlay>> overlays_;

  Census census_;
  std::unique_ptr<EventTap> tap_;
  std::array<Token, 2> monitors_;
  std::array<TimerSource, 2> timers_;
  std::array<Observation, 6> observations_;
};

}  // namespace vembrix
