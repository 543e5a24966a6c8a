#include "platform/DockSwipeEvent.h"

#include <gmock/gmock.h>

#include "platform/portable/EventStream.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

GestureEvent eventOf(const SwipeMoment& moment) {
  GestureEvent event;
  setFields(event, moment);
  return event;
}

TEST(SwipeMomentTest, IsWrittenAsNumberedFieldsInTheSystemsOrder) {
  const GestureEvent event = eventOf({dockswipe::Change, -0.25, -1.5});
  EXPECT_THAT(event.fieldOrder(), ElementsAre(55, 110, 132, 124, 123, 129, 130));
  EXPECT_EQ(event.integerField(55), 30);
  EXPECT_EQ(event.integerField(110), 23);
  EXPECT_EQ(event.integerField(132), 2);
  EXPECT_EQ(event.doubleField(124), -0.25);
  EXPECT_EQ(event.integerField(123), 1);
  EXPECT_EQ(event.doubleField(129), -1.5);
  EXPECT_EQ(event.doubleField(130), -1.5);
}

TEST(SwipeMomentTest, IsReadAsItWasWritten) {
  for (const auto phase :
       {dockswipe::Begin, dockswipe::Change, dockswipe::End, dockswipe::Cancel}) {
    const SwipeMoment moment{phase, 0.001, -400};
    EXPECT_EQ(swipeMoment(eventOf(moment)), moment);
  }
}

TEST(SwipeMomentTest, OtherEventsAreNone) {
  EXPECT_EQ(swipeMoment(GestureEvent()), std::nullopt);
  for (const int field : {dockswipe::EventType, dockswipe::GestureKind}) {
    GestureEvent other = eventOf({});
    other.setIntegerField(field, 22);
    EXPECT_EQ(swipeMoment(other), std::nullopt) << field;
  }
}

TEST(SwipeMomentTest, AnUnknownPhaseIsNone) {
  for (const std::int64_t phase : {0, 3, 16, -1}) {
    GestureEvent event = eventOf({});
    event.setIntegerField(dockswipe::GesturePhase, phase);
    EXPECT_EQ(swipeMoment(event), std::nullopt) << phase;
  }
}

TEST(SwipeMomentTest, GoesWhereTheVelocityPointsOrAtRestTheProgress) {
  const auto direction = [](double progress, double velocity) {
    return SwipeMoment{dockswipe::Begin, progress, velocity}.direction();
  };
  EXPECT_EQ(direction(-1, 0.5), ISSDirection::Right);
  EXPECT_EQ(direction(1, -0.5), ISSDirection::Left);
  EXPECT_EQ(direction(1, 0), ISSDirection::Right);
  EXPECT_EQ(direction(-1, 0), ISSDirection::Left);
  EXPECT_EQ(direction(0, 0), ISSDirection::Right);
}

TEST(SwipeMomentTest, ADirectionIsThatOfItsSign) {
  for (const auto direction : {ISSDirection::Left, ISSDirection::Right}) {
    EXPECT_EQ(directionOf(signOf(direction)), direction);
  }
  EXPECT_EQ(signOf(ISSDirection::Right), 1);
}

}  // namespace
}  // namespace vembrix
