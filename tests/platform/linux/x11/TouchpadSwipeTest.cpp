#include "platform/linux/x11/TouchpadSwipe.h"

#include <gmock/gmock.h>

#include <vector>

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TouchpadSwipeTest : public testing::Test {
 protected:
  using Time = TouchpadSwipe::Time;

  std::vector<std::int64_t> phases() const {
    std::vector<std::int64_t> phases;
    for (const GestureEvent& event : events_) {
      phases.push_back(event.integerField(dockswipe::GesturePhase));
    }
    return phases;
  }

  std::vector<GestureEvent> events_;
  TouchpadSwipe swipe_{[this](const GestureEvent& event) { events_.push_back(event); }};
};

TEST_F(TouchpadSwipeTest, FingersToTheLeftGoToTheSpaceOnTheRight) {
  swipe_.begin(3, Time(1000));
  swipe_.update({Time(1010), -20, 1});
  swipe_.update({Time(1020), -180, 2});
  swipe_.end(TouchpadSwipe::Ending::Completed);
  EXPECT_THAT(phases(), ElementsAre(dockswipe::Begin, dockswipe::Change, dockswipe::End));
  for (const GestureEvent& event : events_) {
    EXPECT_EQ(event.integerField(dockswipe::SourceProcess), 0);
    EXPECT_EQ(event.integerField(dockswipe::EventType), dockswipe::kDockControl);
    EXPECT_EQ(event.integerField(dockswipe::GestureKind), dockswipe::kDockSwipe);
    EXPECT_EQ(event.integerField(dockswipe::Motion), dockswipe::kHorizontal);
  }
  EXPECT_DOUBLE_EQ(events_[0].doubleField(dockswipe::Progress), 0.05);
  EXPECT_DOUBLE_EQ(events_[0].doubleField(dockswipe::VelocityX), 5);
  EXPECT_DOUBLE_EQ(events_[1].doubleField(dockswipe::Progress), 0.5);
  EXPECT_DOUBLE_EQ(events_[1].doubleField(dockswipe::VelocityX), 45);
  EXPECT_DOUBLE_EQ(events_[2].doubleField(dockswipe::Progress), 0.5);
}

TEST_F(TouchpadSwipeTest, FingersToTheRightGoToTheSpaceOnTheLeft) {
  swipe_.begin(4, Time(0));
  swipe_.update({Time(10), 40, 0});
  ASSERT_THAT(phases(), ElementsAre(dockswipe::Begin));
  EXPECT_LT(events_[0].doubleField(dockswipe::Progress), 0);
  EXPECT_LT(events_[0].doubleField(dockswipe::VelocityX), 0);
}

TEST_F(TouchpadSwipeTest, TellsTheBeginningWhenTheWayIsClear) {
  swipe_.begin(3, Time(0));
  swipe_.update({Time(10), 2, 0});
  swipe_.update({Time(20), -3, 0});
  EXPECT_THAT(phases(), IsEmpty());
  swipe_.update({Time(30), -9, 0});
  EXPECT_THAT(phases(), ElementsAre(dockswipe::Begin));
}

TEST_F(TouchpadSwipeTest, ASwipeUpOrDownIsNotToldAtAll) {
  swipe_.begin(3, Time(0));
  swipe_.update({Time(10), 3, -30});
  swipe_.update({Time(20), 300, 0});
  swipe_.end(TouchpadSwipe::Ending::Completed);
  EXPECT_THAT(phases(), IsEmpty());
}

TEST_F(TouchpadSwipeTest, OtherNumbersOfFingersAreOtherGestures) {
  for (const int fingers : {1, 2, 5}) {
    swipe_.begin(fingers, Time(0));
    swipe_.update({Time(10), 100, 0});
    swipe_.end(TouchpadSwipe::Ending::Completed);
  }
  EXPECT_THAT(phases(), IsEmpty());
}

TEST_F(TouchpadSwipeTest, ACancelledSwipeIsToldAsSuch) {
  swipe_.begin(3, Time(0));
  swipe_.update({Time(10), 100, 0});
  swipe_.end(TouchpadSwipe::Ending::Cancelled);
  EXPECT_THAT(phases(), ElementsAre(dockswipe::Begin, dockswipe::Cancel));
}

TEST_F(TouchpadSwipeTest, TimesMayWrapAroundOrStandStill) {
  swipe_.begin(3, Time(0xFFFFFFFB));
  swipe_.update({Time(5), -40, 0});
  EXPECT_DOUBLE_EQ(events_[0].doubleField(dockswipe::VelocityX), 10);
  swipe_.update({Time(5), -4, 0});
  EXPECT_DOUBLE_EQ(events_[1].doubleField(dockswipe::VelocityX), 10);
}

TEST_F(TouchpadSwipeTest, EachSwipeStartsAnew) {
  swipe_.begin(3, Time(0));
  swipe_.update({Time(10), -100, 0});
  swipe_.end(TouchpadSwipe::Ending::Completed);
  events_.clear();
  swipe_.begin(3, Time(500));
  swipe_.update({Time(510), -40, 0});
  EXPECT_DOUBLE_EQ(events_[0].doubleField(dockswipe::Progress), 0.1);
}

}  // namespace
}  // namespace vembrix
