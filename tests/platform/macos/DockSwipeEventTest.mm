#include "platform/DockSwipeEvent.h"

#include <ApplicationServices/ApplicationServices.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#import "platform/macos/support/CFOwned.h"

namespace vembrix {
namespace {

/// The system reads from a swipe what the product writes into it. The event is created and read,
/// but never posted.
class DockSwipeEventTest : public testing::Test {
 protected:
  void setInteger(int field, std::int64_t value) {
    CGEventSetIntegerValueField(event_.get(), static_cast<CGEventField>(field), value);
  }
  std::int64_t integer(int field) const {
    return CGEventGetIntegerValueField(event_.get(), static_cast<CGEventField>(field));
  }
  void setDouble(int field, double value) {
    CGEventSetDoubleValueField(event_.get(), static_cast<CGEventField>(field), value);
  }
  double real(int field) const {
    return CGEventGetDoubleValueField(event_.get(), static_cast<CGEventField>(field));
  }

  const CFOwned<CGEventRef> event_ = CFOwned<CGEventRef>::adopt(CGEventCreate(nullptr));
};

TEST_F(DockSwipeEventTest, TheFieldOfTheTypeMakesItADocksEvent) {
  setInteger(dockswipe::EventType, dockswipe::kDockControl);
  EXPECT_EQ(static_cast<std::int64_t>(CGEventGetType(event_.get())), dockswipe::kDockControl);
  EXPECT_EQ(integer(dockswipe::EventType), dockswipe::kDockControl);
}

TEST_F(DockSwipeEventTest, TheFieldsOfASwipeKeepTheirValues) {
  setInteger(dockswipe::EventType, dockswipe::kDockControl);
  setInteger(dockswipe::GestureKind, dockswipe::kDockSwipe);
  setInteger(dockswipe::Motion, dockswipe::kHorizontal);
  for (const std::int64_t phase :
       {dockswipe::Begin, dockswipe::Change, dockswipe::End, dockswipe::Cancel}) {
    setInteger(dockswipe::GesturePhase, phase);
    EXPECT_EQ(integer(dockswipe::GesturePhase), phase);
  }
  EXPECT_EQ(integer(dockswipe::GestureKind), dockswipe::kDockSwipe);
  EXPECT_EQ(integer(dockswipe::Motion), dockswipe::kHorizontal);
}

TEST_F(DockSwipeEventTest, TheSmallestProgressIsNotNothing) {
  setInteger(dockswipe::EventType, dockswipe::kDockControl);
  setInteger(dockswipe::GestureKind, dockswipe::kDockSwipe);
  for (const double sign : {1.0, -1.0}) {
    const double smallest = sign * std::numeric_limits<float>::denorm_min();
    setDouble(dockswipe::Progress, smallest);
    EXPECT_EQ(real(dockswipe::Progress), smallest);
    setDouble(dockswipe::VelocityX, sign * 400);
    EXPECT_EQ(real(dockswipe::VelocityX), sign * 400);
  }
}

TEST_F(DockSwipeEventTest, AnEventIsMadeWithoutASourceOrAPermission) {
  const auto event = DockSwipeEvent::create();
  ASSERT_NE(event, nullptr);
  event->setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
  event->setDoubleField(dockswipe::Progress, -0.25);
}

TEST_F(DockSwipeEventTest, AnEventHasNoneOfTheFieldsAtFirst) {
  EXPECT_EQ(integer(dockswipe::GestureKind), 0);
  EXPECT_EQ(integer(dockswipe::GesturePhase), 0);
  EXPECT_EQ(real(dockswipe::Progress), 0);
}

}  // namespace
}  // namespace vembrix
