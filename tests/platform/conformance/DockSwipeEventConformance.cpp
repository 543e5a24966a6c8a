#include "platform/DockSwipeEvent.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <vector>

#include "platform/NotificationCenter.h"
#include "platform/WindowServer.h"
#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

class DockSwipeEventConformance : public testing::Test {
 protected:
  static void post(std::int64_t phase, double progress, double velocity) {
    const auto event = DockSwipeEvent::create();
    ASSERT_NE(event, nullptr);
    event->setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
    event->setIntegerField(dockswipe::GestureKind, dockswipe::kDockSwipe);
    event->setIntegerField(dockswipe::GesturePhase, phase);
    event->setDoubleField(dockswipe::Progress, progress);
    event->setIntegerField(dockswipe::Motion, dockswipe::kHorizontal);
    event->setDoubleField(dockswipe::VelocityX, velocity);
    event->setDoubleField(dockswipe::VelocityY, velocity);
    event->post();
  }

  static void swipe(double progress, double velocity) {
    for (const auto phase : {dockswipe::Begin, dockswipe::Change, dockswipe::End}) {
      post(phase, progress, velocity);
    }
  }
  static void swipeAtOnce(double sign) { swipe(sign * std::ldexp(1, -149), sign * 400); }

  WindowServer::SpaceID active() { return server_.CGSGetActiveSpace(connection_); }

  WindowServer::SpaceID spaceAt(std::size_t index) {
    const PropertyList displays = server_.CGSCopyManagedDisplaySpaces(connection_);
    const PropertyList& space = (*(*displays.asArray())[0]["Spaces"].asArray())[index];
    return static_cast<WindowServer::SpaceID>(*space["ManagedSpaceID"].asInteger());
  }

  bool arrivesAt(std::size_t index) {
    return system_.runUntil([&] { return active() == spaceAt(index); }, kPatience);
  }

  /// Waits for anything pending; returns whether that desktop is then active.
  bool staysAt(std::size_t index) {
    system_.runFor(milliseconds(400));
    return active() == spaceAt(index);
  }

  SystemUnderTest& system_ = SystemUnderTest::shared();
  WindowServer& server_ = WindowServer::shared();
  WindowServer::ConnectionID connection_ = server_.CGSMainConnectionID();
  int changes_ = 0;
  Observation observation_ = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [this] { changes_ += 1; });
};

TEST_F(DockSwipeEventConformance, ASwipeMovesToTheNeighbour) {
  swipe(1, 1.5);
  EXPECT_TRUE(arrivesAt(1));
  swipe(1, 1.5);
  EXPECT_TRUE(arrivesAt(2));
  swipe(-1, -1.5);
  EXPECT_TRUE(arrivesAt(1));
  EXPECT_EQ(changes_, 3);
}

TEST_F(DockSwipeEventConformance, NothingMovesBeforeTheEnd) {
  post(dockswipe::Begin, 0.001, 0.5);
  for (int step = 1; step <= 8; ++step) post(dockswipe::Change, step / 8.0, 1.5);
  EXPECT_TRUE(staysAt(0));
  post(dockswipe::End, 1, 1.5);
  EXPECT_TRUE(arrivesAt(1));
}

TEST_F(DockSwipeEventConformance, QuickInstantSwipesCrossOneSpaceEach) {
  swipeAtOnce(1);
  swipeAtOnce(1);
  swipeAtOnce(1);
  EXPECT_TRUE(arrivesAt(3));
  swipeAtOnce(-1);
  swipeAtOnce(-1);
  EXPECT_TRUE(arrivesAt(1));
  EXPECT_TRUE(staysAt(1));
}

TEST_F(DockSwipeEventConformance, SwipesGoOnFromWhereTheUserWentOtherwise) {
  swipeAtOnce(1);
  EXPECT_TRUE(arrivesAt(1));
  system_.goToSpace(spaceAt(3));
  EXPECT_TRUE(arrivesAt(3));
  swipeAtOnce(-1);
  EXPECT_TRUE(arrivesAt(2));
  EXPECT_TRUE(staysAt(2));
}

TEST_F(DockSwipeEventConformance, TheEndsOfTheListAreEnds) {
  swipeAtOnce(-1);
  EXPECT_TRUE(staysAt(0));
  system_.goToSpace(spaceAt(3));
  EXPECT_TRUE(arrivesAt(3));
  swipeAtOnce(1);
  swipe(1, 1.5);
  EXPECT_TRUE(staysAt(3));
  EXPECT_EQ(changes_, 1);
}

TEST_F(DockSwipeEventConformance, WhatIsNoSwipeMovesNowhere) {
  const auto event = DockSwipeEvent::create();
  ASSERT_NE(event, nullptr);
  event->post();
  event->setIntegerField(dockswipe::GesturePhase, dockswipe::End);
  event->setDoubleField(dockswipe::Progress, 1);
  event->post();
  EXPECT_TRUE(staysAt(0));
  EXPECT_EQ(changes_, 0);
}

TEST_F(DockSwipeEventConformance, AnEventMayBePostedAgain) {
  const auto event = DockSwipeEvent::create();
  event->setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
  event->setIntegerField(dockswipe::GestureKind, dockswipe::kDockSwipe);
  event->setDoubleField(dockswipe::Progress, 1);
  event->setDoubleField(dockswipe::VelocityX, 1.5);
  for (const auto phase : {dockswipe::Begin, dockswipe::End}) {
    event->setIntegerField(dockswipe::GesturePhase, phase);
    event->post();
  }
  EXPECT_TRUE(arrivesAt(1));
}

}  // namespace
}  // namespace vembrix
