#include <gmock/gmock.h>

#include <chrono>

#include "app/AppDelegate.h"
#include "labels/SignVisibilityTest.h"
#include "platform/embedded/faces/RecordingTourOverlay.h"
#include "support/SignTest.h"

namespace vembrix {
namespace {

using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

class WiredSignsTest : public SignTest {
 protected:
  WiredSignsTest() {
    delegate_.applicationDidFinishLaunching();
    queue_.advance(seconds(30));  // past the tour
  }
  GestureEvent swipeBegin(double velocity, std::int64_t process = 0) const {
    GestureEvent event;
    event.setIntegerField(dockswipe::SourceProcess, process);
    event.setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
    event.setIntegerField(dockswipe::GestureKind, dockswipe::kDockSwipe);
    event.setIntegerField(dockswipe::GesturePhase, dockswipe::Begin);
    event.setDoubleField(dockswipe::VelocityX, velocity);
    return event;
  }

  AppDelegate delegate_;
};

TEST_F(WiredSignsTest, AfterTheTourEveryDesktopHasItsLabelAndOnlyTheOthersAreSeen) {
  EXPECT_NE(delegate_.signs(), nullptr);
  EXPECT_EQ(labelCount(), 4U);
  EXPECT_THAT(alphas(), ElementsAre(0, 0.78, 0.78, 0.78));
  EXPECT_THAT(RecordingTourOverlay::windows(), IsEmpty());
  for (std::size_t place = 0; place < 4; ++place) {
    EXPECT_THAT(spacesOf(label(place)), ElementsAre(space(place)));
  }
}

TEST_F(WiredSignsTest, TheHotCornerShowsTheLabels) {
  moveMouse(2, 898);
  advance(500);
  EXPECT_THAT(alphas(), ElementsAre(0, 1, 1, 1));
  moveMouse(100, 898);
  advance(5000);
  EXPECT_THAT(alphas(), ElementsAre(0, 1, 1, 1)) << "until the user touches one";
  touchLabels();
  advance(500);
  EXPECT_NE(alpha(1), 1);
}

TEST_F(WiredSignsTest, ASwipeOfTheUserShowsTheLabelOfTheNeighbor) {
  desktop_.addSpace("Main");
  desktop_.activate(space(3));
  advance(1000);
  ASSERT_EQ(labelCount(), 4U);
  desktop_.events().send(swipeBegin(0.5));
  EXPECT_EQ(labelCount(), 4U) << "after the event's own handling";
  turn();
  EXPECT_EQ(labelCount(), 5U);
  EXPECT_EQ(alpha(4), 0.78);
}

TEST_F(WiredSignsTest, ASwipeToTheLeftLooksToTheLeft) {
  desktop_.addSpace("Main");
  desktop_.moveSpace(space(4), 0);
  manager_.reload();
  ASSERT_FALSE(hasLabel(space(0)));
  desktop_.events().send(swipeBegin(0.5));
  turn();
  EXPECT_FALSE(hasLabel(space(0)));
  desktop_.events().sendToTaps(dockswipe::kDockControl, [&] {
    GestureEvent end = swipeBegin(0);
    end.setIntegerField(dockswipe::GesturePhase, dockswipe::Cancel);
    return end;
  }());
  desktop_.events().send(swipeBegin(-0.5));
  turn();
  EXPECT_TRUE(hasLabel(space(0)));
}

TEST_F(WiredSignsTest, TheProgramsOwnSwipesShowNoLabels) {
  desktop_.addSpace("Main");
  desktop_.activate(space(3));
  advance(1000);
  desktop_.events().send(swipeBegin(0.5, 1));
  turn();
  EXPECT_EQ(labelCount(), 4U);
}

TEST_F(WiredSignsTest, AWholeSwipeEndsWithTheFadeOfTheLabelArrivedAt) {
  desktop_.swipe(ISSDirection::Right);
  advance(200);
  ASSERT_EQ(desktop_.activeSpace(), space(1));
  turn();
  EXPECT_THAT(alphas(), ElementsAre(0.78, 0.78, 0.78, 0.78));
  EXPECT_TRUE(label(1).isAnimating());
  advance(500);
  EXPECT_THAT(alphas(), ElementsAre(0.78, 0, 0.78, 0.78));
}

TEST_F(WiredSignsTest, ACallBackAfterTheControllersEndIsNothing) {
  desktop_.input().moveMouse({2, 898});
  desktop_.events().send(swipeBegin(0.5));
  delegate_ = AppDelegate();
  turn();
  queue_.advance(seconds(20));
  EXPECT_EQ(labelCount(), 0U);
}

}  // namespace
}  // namespace vembrix
