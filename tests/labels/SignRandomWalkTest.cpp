#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <set>

#include "platform/embedded/RecordingTourOverlay.h"
#include "spaces/SwipeWatcher.h"
#include "support/SignTest.h"
#include "watchers/HotCornerWatcher.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int kStepsPerSeed = 20'000;

/// A user who does anything at all, in any order. What has to hold is checked after
/// every event, each of which is a turn of the main queue of its own, as on a real
/// system.
class SignRandomWalkTest : public SignTest, public testing::WithParamInterface<unsigned> {
 protected:
  static constexpr double kTextSizes[] = {40, 160, 400};
  static constexpr double kAlphas[] = {0, 0.3, 0.78, 1};

  SignRandomWalkTest() {
    // Slides end within the turn; those that take longer are begun and called off.
    desktop_.setTransitionTime(Duration::zero());
    desktop_.watchWindowSpaces(
        [this](const EmbeddedDesktop::WindowSpacesCall& call) { learnOwner(call); });
    MissionControlWatcher::shared().start();
    SpaceHeatTracker::shared().start();
    begin();
    arrival_ = NotificationCenter::defaultCenter().addObserver(SpaceManager::activeChanged,
                                                               [this] { showing_ = false; });
    hot_->onApproach = [this] { showAll(); };
    hot_->start();
    swipes_->onSwipeBegan = [this](bool isRight) { controller_->handleSwipeBegan(isRight); };
    swipes_->start();
  }

  // The user, chance, and the system

  std::size_t random(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }
  SpaceID randomSpace() {
    const auto ids = desktop_.spaceIDs();
    return ids[random(ids.size())];
  }
  bool hasSecondDisplay() const { return desktop_.screens().all().size() > 1; }

  void step() {
    using Event = void (SignRandomWalkTest::*)();
    // The frequent ones are named several times.
    static constexpr Event kEvents[] = {
        &SignRandomWalkTest::activate,      &SignRandomWalkTest::activate,
        &SignRandomWalkTest::activate,      &SignRandomWalkTest::swipe,
        &SignRandomWalkTest::swipe,         &SignRandomWalkTest::beginSwipe,
        &SignRandomWalkTest::engageHere,    &SignRandomWalkTest::moveAnywhere,
        &SignRandomWalkTest::touchCenter,   &SignRandomWalkTest::goToCorner,
        &SignRandomWalkTest::goToCorner,    &SignRandomWalkTest::toggleMissionControl,
        &SignRandomWalkTest::changeSetting, &SignRandomWalkTest::changeSpaces,
        &SignRandomWalkTest::openMenu,      &SignRandomWalkTest::changeScreens,
        &SignRandomWalkTest::tour,          &SignRandomWalkTest::moveBehindTheBack,
        &SignRandomWalkTest::sleepAndWake,  &SignRandomWalkTest::passTime,
        &SignRandomWalkTest::passTime,      &SignRandomWalkTest::passTime,
        &SignRandomWalkTest::passTime,      &SignRandomWalkTest::passTime,
    };
    if (random(200) == 0) {
      beQuiet();
    } else {
      (this->*kEvents[random(std::size(kEvents))])();
    }
    turn();
    if (showing_ && queue_.now() >= showEnd_) showing_ = false;
  }

  void activate() { desktop_.activate(randomSpace()); }
  void swipe() { desktop_.swipe(random(2) == 0 ? Dock::Direction::Left : Dock::Direction::Right); }
  /// A swipe that is called off.
  void beginSwipe() {
    GestureEvent event;
    event.setInteger(dockswipe::EventType, dockswipe::kDockControl);
    event.setInteger(dockswipe::GestureKind, dockswipe::kDockSwipe);
    event.setInteger(dockswipe::GesturePhase, dockswipe::Begin);
    event.setDouble(dockswipe::VelocityX, random(2) == 0 ? -1 : 1);
    desktop_.events().send(event);
    event.setInteger(dockswipe::GesturePhase, dockswipe::Cancel);
    desktop_.events().send(event);
  }
  void engageHere() { desktop_.input().send(random(2) == 0 ? KeyDown : LeftMouseDown); }
  void moveAnywhere() {
    moveTo({static_cast<double>(random(2000)), static_cast<double>(random(1000))});
  }
  void touchCenter() {
    const Rect& frame = desktop_.screens().mainScreen()->frame;
    moveTo({frame.x + frame.width / 2, frame.y + frame.height / 2});
  }
  void goToCorner() {
    const Rect& frame = desktop_.screens().mainScreen()->frame;
    moveTo({frame.x + 1, frame.y + frame.height - 1});
  }
  void moveTo(Point point) {
    if (showing_ && !MissionControlWatcher::shared().isActive()) {
      showing_ = std::ranges::none_of(RecordingSignWindow::all(), [&](const auto* window) {
        return contains(window->frame(), point);
      });
    }
    desktop_.input().moveMouse(point);
  }
  void toggleMissionControl() {
    missionControl_ = !missionControl_;
    desktop_.setMissionControl(missionControl_);
  }
  void changeSetting() {
    switch (random(9)) {
      case 0:
      case 1:
        store_.setShowSignInSwipeMode(!store_.showSignInSwipeMode());
        lastRise_ = queue_.now();
        break;
      case 2:
        store_.setShowSignAfterSelection(!store_.showSignAfterSelection());
        break;
      case 3:
        store_.setHeatMapSigns(!store_.heatMapSigns());
        break;
      case 4:
        store_.setSignSwipeAlpha(kAlphas[random(std::size(kAlphas))]);
        break;
      case 5:
        store_.setSignTextSize(kTextSizes[random(std::size(kTextSizes))]);
        break;
      case 6:
        store_.setHeatPaletteName(builtInHeatPalettes()[random(4)].name);
        break;
      case 7:
        defaults_.set("SignSwipeAlpha", "nonsense");
        NotificationCenter::defaultCenter().post(PreferencesStore::didChange);
        break;
      default:
        manager_.setName(random(2) == 0 ? "" : "Name " + std::to_string(random(100)),
                         manager_.spaces()[random(manager_.spaces().size())]);
    }
  }
  /// Uuids come again, so that the list of all ever seen stays short.
  void addSpace(std::string_view display, EmbeddedDesktop::SpaceType type) {
    added_ += 1;
    desktop_.addSpace(display, type, "walk-" + std::to_string(added_ % 64));
  }
  void changeSpaces() {
    const bool hasRoom = desktop_.spaceIDs().size() < 12;
    switch (random(5)) {
      case 0:
        if (hasRoom) addSpace("Main", EmbeddedDesktop::SpaceType::Desktop);
        break;
      case 1:
        if (hasRoom) addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
        break;
      case 2:
        if (hasRoom) addSpace("Second", EmbeddedDesktop::SpaceType::Desktop);
        break;
      case 3:
        desktop_.removeSpace(randomSpace());
        break;
      default:
        desktop_.moveSpace(randomSpace(), random(6));
    }
  }
  /// The list of Spaces is read again, and nothing was announced.
  void openMenu() { manager_.reload(); }
  void changeScreens() {
    if (random(2) == 0) {
      desktop_.setDisplayFrame("Main", {0, 0, 800.0 + static_cast<double>(random(1200)), 900});
    } else if (hasSecondDisplay()) {
      desktop_.removeDisplay("Second");
    } else {
      desktop_.addDisplay({.identifier = "Second", .frame = {2000, 0, 1920, 1080}});
    }
  }
  void tour() {
    touring_ = !touring_;
    NotificationCenter::defaultCenter().post(touring_ ? SpaceManager::tourWillStart
                                                      : SpaceManager::tourDidEnd);
    if (!touring_) blocks_.insert(queue_.now() + milliseconds(250));
  }
  void moveBehindTheBack() {
    const auto& labels = RecordingSignWindow::all();
    if (labels.empty()) return;
    const auto number = labels[random(labels.size())]->windowNumber();
    std::vector<SpaceID> spaces;
    for (std::size_t count = random(4); count > 0; --count) {
      const SpaceID space = randomSpace();
      if (std::ranges::find(spaces, space) == spaces.end()) spaces.push_back(space);
    }
    desktop_.windows().move(number, spaces);
  }
  void sleepAndWake() {
    queue_.sleep(milliseconds(random(20'000)));
    turn();
    desktop_.wake();
  }
  void passTime() { advance(static_cast<int>(random(700))); }
  /// Long enough for a reconciliation, after which the list is read anew.
  void beQuiet() {
    queue_.advance(seconds(5));
    manager_.reload();
    turn();
    checkPlaces();
    queue_.advance(seconds(1));
    if (showing_ && queue_.now() >= showEnd_) showing_ = false;
    checkRest();
  }

  // What the walk knows of the controller's doings

  void showAll() {
    const bool begins =
        store_.showSignAfterSelection() && !MissionControlWatcher::shared().isActive();
    controller_->showAll();
    if (!begins) return;
    showing_ = true;
    showEnd_ = queue_.now() + seconds(15);
    blocks_.insert(queue_.now() + milliseconds(500));
    // Right after the controller's own block.
    queue_.after(milliseconds(500), [this] { lastRise_ = queue_.now(); });
    blocks_.insert(queue_.now() + milliseconds(500));
  }
  /// A label's window is first added to the Space that it belongs to.
  void learnOwner(const EmbeddedDesktop::WindowSpacesCall& call) {
    if (call.kind != EmbeddedDesktop::WindowSpacesCall::Kind::Add) return;
    owners_.try_emplace(call.windows.front(), call.spaces.front());
  }
  SpaceID ownerOf(const RecordingSignWindow& window) const {
    return owners_.at(window.windowNumber());
  }

  // What holds

  void check() {
    const bool swipeMode = store_.showSignInSwipeMode();
    std::set<SpaceID> labelled;
    for (const RecordingSignWindow* window : RecordingSignWindow::all()) {
      const SpaceID owner = ownerOf(*window);
      ASSERT_TRUE(labelled.insert(owner).second) << "a second label of " << owner;
      ASSERT_NE(std::ranges::find(manager_.spaces(), owner, &SpaceInfo::spaceID),
                manager_.spaces().end())
          << "a label of a Space that is not listed";
      ASSERT_TRUE(window->isOrderedIn());
      const double alpha = window->alphaValue();
      ASSERT_TRUE(alpha >= 0 && alpha <= 1);
      if (owner == manager_.activeSpaceID() && !showing_ && !window->isAnimating()) {
        ASSERT_EQ(alpha, 0) << "the active label at rest";
      }
      if (!swipeMode && alpha > 0) {
        ASSERT_LE(queue_.now() - lastRise_, milliseconds(500)) << "with swipe mode off";
      }
      if (!showing_) {
        ASSERT_EQ(window->collectionBehavior(), kSignBehavior);
      }
    }
    const SpaceInfo* active = manager_.activeSpace();
    if (active && active->isDesktop()) {
      ASSERT_TRUE(labelled.contains(active->spaceID)) << "the active desktop has its label";
    }
    checkPending();
  }

  void checkPending() {
    blocks_.erase(blocks_.begin(), blocks_.upper_bound(queue_.now()));
    const std::size_t timers = 2;  // the controller's, and Mission Control's
    ASSERT_EQ(queue_.pendingCount(), timers + blocks_.size() + (showing_ ? 1 : 0))
        << "blocks that nobody waits for, or too few";
    ASSERT_LE(RecordingTourOverlay::windows().size(), 12U);
  }

  /// A window that was moved into no Space is left alone, so there it stays; every other
  /// label is in its own Space and nowhere else.
  void checkPlaces() {
    for (const RecordingSignWindow* window : RecordingSignWindow::all()) {
      const auto spaces = spacesOf(*window);
      if (spaces.empty()) continue;
      ASSERT_EQ(spaces, std::vector{ownerOf(*window)});
      const auto space =
          std::ranges::find(manager_.spaces(), ownerOf(*window), &SpaceInfo::spaceID);
      ASSERT_NE(space, manager_.spaces().end());
      ASSERT_EQ(window->view().text(), manager_.displayName(*space));
    }
  }
  /// A second after the last event.
  void checkRest() {
    if (touring_) return;
    const bool swipeMode = store_.showSignInSwipeMode();
    const bool missionControl = MissionControlWatcher::shared().isActive();
    for (const RecordingSignWindow* window : RecordingSignWindow::all()) {
      const bool isActive = ownerOf(*window) == manager_.activeSpaceID();
      double expected = isActive || !swipeMode ? 0 : missionControl ? 1 : store_.signSwipeAlpha();
      if (showing_ && !missionControl && swipeMode) continue;
      ASSERT_EQ(window->alphaValue(), expected);
    }
  }

  std::mt19937 random_{GetParam()};
  std::shared_ptr<HotCornerWatcher> hot_ = HotCornerWatcher::create();
  std::shared_ptr<SwipeWatcher> swipes_ = SwipeWatcher::create();
  Observation arrival_;
  std::map<WindowServer::WindowNumber, SpaceID> owners_;
  int added_ = 0;
  bool missionControl_ = false;
  bool touring_ = false;
  bool showing_ = false;
  Duration showEnd_{};
  /// When a label was last let rise that swipe mode, being off, takes down again.
  Duration lastRise_{};
  /// When the blocks are due that cannot be cancelled.
  std::multiset<Duration> blocks_;
};

TEST_P(SignRandomWalkTest, WhatHasToHoldHoldsAfterEveryEvent) {
  for (int i = 0; i < kStepsPerSeed; ++i) {
    step();
    check();
    ASSERT_FALSE(HasFatalFailure()) << "at step " << i << " of seed " << GetParam();
  }
  const auto labels = RecordingSignWindow::all().size();
  EXPECT_GT(labels, 0U);
  controller_.reset();
  EXPECT_EQ(labelCount(), 0U);
  queue_.advance(seconds(1));
  EXPECT_EQ(queue_.pendingCount(), 1U) << "Mission Control's timer";
  EXPECT_EQ(desktop_.windows().count(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, SignRandomWalkTest, testing::Values(1, 7, 42, 1234, 20261121));

}  // namespace
}  // namespace vembrix
