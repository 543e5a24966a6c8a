#include <gmock/gmock.h>

#include <cmath>

#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/services/EmbeddedLog.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "settings/PreferencesStore.h"
#include "spaces/DockSwipe.h"
#include "spaces/SpaceManager.h"
#include "spaces/SpaceObserver.h"
#include "support/SwipeRecorder.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

class SpaceSwitchingTest : public testing::Test {
 protected:
  SpaceSwitchingTest() { manager_.reload(); }

  SpaceInfo space(std::size_t place) { return manager_.spaces().at(place); }
  void start(std::size_t place) { desktop_.activate(desktop_.spaceAt(place)); }

  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  SpaceManager& manager_ = SpaceManager::shared();
  SpaceObserver observer_;
  Observation observation_ = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [this] { observer_.activeSpaceDidChange(); });
  SwipeRecorder recorder_;
};

TEST_F(SpaceSwitchingTest, ClickingTheActiveSpacePostsNothing) {
  manager_.switchToSpace(space(0));
  queue_.advance(milliseconds(2000));
  EXPECT_THAT(recorder_.events(), IsEmpty());
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(0));
}

TEST_F(SpaceSwitchingTest, FromTheFirstToTheFourthAreThreeAnimatedSwipes220msApart) {
  manager_.switchToSpace(space(3));
  queue_.advance(milliseconds(2000));
  EXPECT_THAT(recorder_.begins(), ElementsAre(0, 220, 440));
  EXPECT_THAT(recorder_.directions(), Each(1));
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(3));
  EXPECT_EQ(manager_.activeSpaceID(), desktop_.spaceAt(3));
}

TEST_F(SpaceSwitchingTest, WithTheInstantPreferenceThreeInstantSwipesAre50msApart) {
  PreferencesStore::shared().setInstantMenuSwitch(true);
  manager_.switchToSpace(space(3));
  queue_.advance(milliseconds(100));
  EXPECT_THAT(recorder_.begins(), ElementsAre(0, 50, 100));
  EXPECT_EQ(recorder_.events().size(), 9U);
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(3));
}

TEST_F(SpaceSwitchingTest, ThePreferenceAtTheStartHoldsForTheWholeSwitch) {
  PreferencesStore::shared().setInstantMenuSwitch(true);
  manager_.switchToSpace(space(2));
  PreferencesStore::shared().setInstantMenuSwitch(false);
  queue_.advance(milliseconds(50));
  EXPECT_EQ(recorder_.events().size(), 6U);
}

TEST_F(SpaceSwitchingTest, FromTheLastToTheFirstAllSwipesGoLeftWithNegativeValues) {
  start(3);
  manager_.switchToSpace(space(0));
  queue_.advance(milliseconds(2000));
  EXPECT_THAT(recorder_.directions(), ElementsAre(-1, -1, -1));
  for (const SwipeRecorder::Event& event : recorder_.events()) {
    EXPECT_LT(event.progress, 0);
    EXPECT_LT(event.velocity, 0);
    EXPECT_LT(event.velocityY, 0);
  }
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(0));
}

TEST_F(SpaceSwitchingTest, AnAnimatedSwipeIsTenEventsIn162ms) {
  animatedDockSwipe(ISSDirection::Right);
  queue_.advance(milliseconds(500));
  std::vector<SwipeRecorder::Event> expected = {{0, 1, 0.001, 0.5, 0.5, 1}};
  for (std::int64_t i = 1; i <= 8; ++i) {
    expected.push_back({18 * i, 2, static_cast<double>(i) / 8, 1.5, 1.5, 1});
  }
  expected.push_back({162, 4, 1.0, 1.5, 1.5, 1});
  EXPECT_EQ(recorder_.events(), expected);
}

TEST_F(SpaceSwitchingTest, AnInstantSwipeIsThreeEventsAtOnce) {
  instantDockSwipe(ISSDirection::Left);
  const double progress = -1.401298464324817e-45;
  ASSERT_EQ(progress, -std::ldexp(1.0, -149));
  EXPECT_THAT(recorder_.events(), ElementsAre(SwipeRecorder::Event{0, 1, progress, -400, -400, 1},
                                              SwipeRecorder::Event{0, 2, progress, -400, -400, 1},
                                              SwipeRecorder::Event{0, 4, progress, -400, -400, 1}));
}

TEST_F(SpaceSwitchingTest, FieldsAreSetInTheirOrderAndTheSourceIsTheProcess) {
  std::vector<int> order;
  std::int64_t source = 0;
  const auto tap = desktop_.events().makeTap([&](std::uint32_t type, const TappedEvent& event) {
    order = dynamic_cast<const GestureEvent&>(event).fieldOrder();
    source = event.integerField(41);
    EXPECT_EQ(type, 30U);
    EXPECT_EQ(event.integerField(55), 30);
    EXPECT_EQ(event.integerField(110), 23);
  });
  tap->enable();
  instantDockSwipe(ISSDirection::Right);
  EXPECT_THAT(order, ElementsAre(55, 110, 132, 124, 123, 129, 130, 41));
  EXPECT_NE(source, 0);
}

TEST_F(SpaceSwitchingTest, DesktopsOfAllDisplaysAreCountedInOneSequence) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 1920, 1080}});
  desktop_.addSpace("Second");
  manager_.reload();
  manager_.switchToSpace(space(5));
  queue_.advance(milliseconds(2000));
  EXPECT_EQ(recorder_.begins().size(), 5U);
}

TEST_F(SpaceSwitchingTest, FullScreenSpacesAreNotCounted) {
  const auto full = desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  desktop_.moveSpace(full, 1);
  manager_.reload();
  manager_.switchToSpace(space(2));
  queue_.advance(milliseconds(500));
  EXPECT_EQ(recorder_.begins().size(), 1U);
}

TEST_F(SpaceSwitchingTest, FromAFullScreenSpaceNothingHappensWithThePermission) {
  desktop_.activate(desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen));
  manager_.switchToSpace(space(0));
  queue_.advance(milliseconds(2000));
  EXPECT_THAT(recorder_.events(), IsEmpty());
}

TEST_F(SpaceSwitchingTest, ToAFullScreenSpaceNothingHappensWithThePermission) {
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  manager_.reload();
  manager_.switchToSpace(space(4));
  queue_.advance(milliseconds(2000));
  EXPECT_THAT(recorder_.events(), IsEmpty());
}

TEST_F(SpaceSwitchingTest, WithoutThePermissionTheSwitchIsDirectAlsoFromAFullScreenSpace) {
  desktop_.activate(desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen));
  desktop_.setTrusted(false);
  manager_.switchToSpace(space(2));
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(2));
  EXPECT_THAT(recorder_.events(), IsEmpty());
  EXPECT_THAT(EmbeddedLog::shared().lines(),
              ElementsAre("[Vembrix] direct-switching to space 3 (no Accessibility)"));
}

TEST_F(SpaceSwitchingTest, TheDirectSwitchNamesTheDisplayThatHoldsTheSpace) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 1920, 1080}});
  const auto target = desktop_.addSpace("Second");
  desktop_.activate(desktop_.spaceIDs().at(4));
  desktop_.setTrusted(false);
  manager_.switchToSpace(space(5));
  EXPECT_EQ(desktop_.activeSpace(), target);
  EXPECT_EQ(manager_.activeSpaceID(), target);
}

TEST_F(SpaceSwitchingTest, ClickingTheActiveSpaceSwitchesNothingWithoutThePermissionEither) {
  desktop_.setTrusted(false);
  manager_.switchToSpace(space(0));
  EXPECT_THAT(EmbeddedLog::shared().lines(), IsEmpty());
}

TEST_F(SpaceSwitchingTest, TheDirectSwitchIgnoresSpacesThatAreGone) {
  const SpaceInfo last = space(3);
  desktop_.setSpaceCount(3);
  desktop_.setTrusted(false);
  manager_.switchToSpace(last);
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(0));
  EXPECT_THAT(EmbeddedLog::shared().lines(), IsEmpty());
}

TEST_F(SpaceSwitchingTest, TheDirectSwitchSurvivesMalformedAnswers) {
  using Array = PropertyList::Array;
  using Dictionary = PropertyList::Dictionary;
  desktop_.setTrusted(false);
  const PropertyList entry = Dictionary{{"ManagedSpaceID", 3}};
  for (const PropertyList& answer :
       {PropertyList(), PropertyList("text"), PropertyList(Array{}), PropertyList(Array{7}),
        PropertyList(Array{Dictionary{{"Spaces", Array{entry}}}}),
        PropertyList(Array{Dictionary{{"Display Identifier", "Main"}, {"Spaces", entry}}}),
        PropertyList(Array{Dictionary{{"Display Identifier", "Main"},
                                      {"Spaces", Array{Dictionary{{"id64", 3}}}}}}),
        PropertyList(Array{Dictionary{{"Display Identifier", "Main"},
                                      {"Spaces", Array{Dictionary{{"ManagedSpaceID", -3}}}}}})}) {
    desktop_.overrideManagedDisplaySpaces(answer);
    manager_.switchToSpace({3, "embedded-space-3", "Main", 0});
  }
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(0));
  EXPECT_THAT(EmbeddedLog::shared().lines(), IsEmpty());
}

TEST_F(SpaceSwitchingTest, TwoQuickSwitchesInterleave) {
  manager_.switchToSpace(space(2));
  queue_.advance(milliseconds(100));
  manager_.switchToSpace(space(1));
  queue_.advance(milliseconds(3000));
  EXPECT_THAT(recorder_.begins(), ElementsAre(0, 100, 220));
  EXPECT_THAT(recorder_.directions(), ElementsAre(1, 1, 1));
}

TEST_F(SpaceSwitchingTest, AnEventThatCannotBeMadeIsSkippedAndTheSwipeGoesOn) {
  desktop_.refuseSwipeEvents(1);
  instantDockSwipe(ISSDirection::Right);
  ASSERT_EQ(recorder_.events().size(), 2U);
  EXPECT_EQ(recorder_.events()[0].phase, dockswipe::Change);
  EXPECT_EQ(recorder_.events()[1].phase, dockswipe::End);
}

TEST_F(SpaceSwitchingTest, AnAnimatedSwipeWithoutItsFirstEventHasTheOthersAtTheirTimes) {
  desktop_.refuseSwipeEvents(1);
  animatedDockSwipe(ISSDirection::Right);
  queue_.advance(milliseconds(500));
  std::vector<std::int64_t> times;
  for (const SwipeRecorder::Event& event : recorder_.events()) times.push_back(event.milliseconds);
  EXPECT_THAT(times, ElementsAre(18, 36, 54, 72, 90, 108, 126, 144, 162));
}

TEST_F(SpaceSwitchingTest, SwitchingAcrossALostSwipeStopsShort) {
  desktop_.loseSwipes(1);
  manager_.switchToSpace(space(3));
  queue_.advance(milliseconds(2000));
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(2));
}

}  // namespace
}  // namespace vembrix
