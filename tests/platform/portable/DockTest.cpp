#include "platform/portable/Dock.h"

#include <gmock/gmock.h>

#include <cmath>
#include <utility>
#include <vector>

#include "platform/DockSwipeEvent.h"
#include "platform/portable/EventStream.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using enum ISSDirection;
using enum Dock::Arrival;

class DockTest : public testing::Test {
 protected:
  static GestureEvent event(std::int64_t phase, double progress, double velocity) {
    GestureEvent event;
    event.setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
    event.setIntegerField(dockswipe::GestureKind, dockswipe::kDockSwipe);
    event.setIntegerField(dockswipe::GesturePhase, phase);
    event.setDoubleField(dockswipe::Progress, progress);
    event.setDoubleField(dockswipe::VelocityX, velocity);
    return event;
  }

  void swipe(double progress, double velocity) {
    dock_.handle(event(dockswipe::Begin, 0, 0));
    dock_.handle(event(dockswipe::Change, progress / 2, velocity));
    dock_.handle(event(dockswipe::End, progress, velocity));
  }

  std::vector<std::pair<ISSDirection, Dock::Arrival>> moves_;
  Dock dock_{[this](ISSDirection direction, Dock::Arrival arrival) {
    moves_.emplace_back(direction, arrival);
  }};
};

TEST_F(DockTest, AWholeSwipeMovesOneSpaceItsWay) {
  swipe(1, 1.5);
  swipe(-1, -1.5);
  EXPECT_THAT(moves_, ElementsAre(Pair(Right, AfterTransition), Pair(Left, AfterTransition)));
}

TEST_F(DockTest, NothingMovesBeforeTheEnd) {
  dock_.handle(event(dockswipe::Begin, 0.1, 1.5));
  dock_.handle(event(dockswipe::Change, 1, 1.5));
  EXPECT_THAT(moves_, IsEmpty());
}

TEST_F(DockTest, HalfOfTheWayIsEnough) {
  swipe(0.5, 0);
  swipe(-0.5, 0);
  EXPECT_THAT(moves_, ElementsAre(Pair(Right, AfterTransition), Pair(Left, AfterTransition)));
}

TEST_F(DockTest, LessThanHalfOfTheWayIsNot) {
  swipe(0.49, 0.9);
  swipe(-0.49, -0.9);
  EXPECT_THAT(moves_, IsEmpty());
}

TEST_F(DockTest, AFlickIsEnoughOnAnyWay) {
  swipe(0.1, 1);
  swipe(-0.1, -1);
  EXPECT_THAT(moves_, ElementsAre(Pair(Right, AfterTransition), Pair(Left, AfterTransition)));
}

TEST_F(DockTest, AFlickBackTakesItBack) {
  swipe(0.9, -1);
  swipe(-0.9, 1);
  EXPECT_THAT(moves_, IsEmpty());
}

TEST_F(DockTest, NoWayAtAGreatSpeedArrivesAtOnce) {
  swipe(std::ldexp(1, -149), 400);
  swipe(-std::ldexp(1, -149), -400);
  EXPECT_THAT(moves_, ElementsAre(Pair(Right, AtOnce), Pair(Left, AtOnce)));
}

TEST_F(DockTest, NoWayAtACommonSpeedIsNothing) {
  swipe(0, 50);
  EXPECT_THAT(moves_, IsEmpty());
}

TEST_F(DockTest, ACancelledSwipeMovesNowhere) {
  dock_.handle(event(dockswipe::Begin, 0, 0));
  dock_.handle(event(dockswipe::Change, 0.9, 1.5));
  dock_.handle(event(dockswipe::Cancel, 0.9, 1.5));
  dock_.handle(event(dockswipe::End, 0.9, 1.5));
  EXPECT_THAT(moves_, IsEmpty());
}

TEST_F(DockTest, ASwipeThatBeginsBeforeTheEndOfTheLastMovesAsWell) {
  dock_.handle(event(dockswipe::Begin, 0, 0));
  dock_.handle(event(dockswipe::Change, 0.9, 1.5));
  dock_.handle(event(dockswipe::Begin, 0, 0));
  dock_.handle(event(dockswipe::End, 1, 1.5));
  dock_.handle(event(dockswipe::End, 1, 1.5));
  dock_.handle(event(dockswipe::End, 1, 1.5));
  EXPECT_THAT(moves_, ElementsAre(Pair(Right, AfterTransition), Pair(Right, AfterTransition)));
}

TEST_F(DockTest, AnEndWithoutABeginningIsNothing) {
  dock_.handle(event(dockswipe::End, 1, 1.5));
  EXPECT_THAT(moves_, IsEmpty());
}

TEST_F(DockTest, OtherEventsAreNoSwipes) {
  for (const int field : {dockswipe::EventType, dockswipe::GestureKind}) {
    for (const auto phase : {dockswipe::Begin, dockswipe::Change, dockswipe::End}) {
      GestureEvent other = event(phase, 1, 1.5);
      other.setIntegerField(field, 22);
      dock_.handle(other);
    }
  }
  EXPECT_THAT(moves_, IsEmpty());
}

TEST_F(DockTest, TellsWhenASwipeBegins) {
  int begins = 0;
  dock_.onBegin([&] { begins += 1; });
  swipe(1, 1.5);
  EXPECT_EQ(begins, 1);
  swipe(0.1, 0);
  EXPECT_EQ(begins, 2);
}

}  // namespace
}  // namespace vembrix
