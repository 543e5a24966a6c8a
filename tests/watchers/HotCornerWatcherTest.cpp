#include "watchers/HotCornerWatcher.h"

#include <gtest/gtest.h>

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

namespace vembrix {
namespace {

class HotCornerWatcherTest : public testing::Test {
 protected:
  HotCornerWatcherTest() {
    watcher_->onApproach = [this] { approaches_ += 1; };
    watcher_->start();
  }

  void move(double x, double y) {
    desktop_.input().moveMouse({x, y});
    queue_.runPending();
  }

  EmbeddedDesktop& desktop_ = EmbeddedDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  std::shared_ptr<HotCornerWatcher> watcher_ = HotCornerWatcher::create();
  int approaches_ = 0;
};

TEST_F(HotCornerWatcherTest, ThePointerAtTheEdgeOfTheZoneIsInIt) {
  move(5, 895);
  EXPECT_EQ(approaches_, 1);
}

TEST_F(HotCornerWatcherTest, OnePointFurtherRightOrDownIsOutside) {
  move(6, 895);
  move(5, 894);
  EXPECT_EQ(approaches_, 0);
}

TEST_F(HotCornerWatcherTest, TheOuterEdgesBelongToTheZone) {
  move(0, 900);
  EXPECT_EQ(approaches_, 1);
  move(100, 100);
  move(-1, 900);
  move(0, 901);
  EXPECT_EQ(approaches_, 1);
}

TEST_F(HotCornerWatcherTest, MovingInsideFiresOnceAndComingBackFiresAgain) {
  move(1, 899);
  move(2, 898);
  move(0, 900);
  EXPECT_EQ(approaches_, 1);
  move(50, 50);
  move(1, 899);
  EXPECT_EQ(approaches_, 2);
}

TEST_F(HotCornerWatcherTest, MovesOverOwnWindowsDoNotCount) {
  desktop_.input().moveMouse({1, 899}, EmbeddedInput::Target::OwnWindow);
  queue_.runPending();
  EXPECT_EQ(approaches_, 0);
}

TEST_F(HotCornerWatcherTest, OtherInputInTheCornerDoesNotCount) {
  desktop_.input().moveMouse({1, 899}, EmbeddedInput::Target::OwnWindow);
  desktop_.input().send(LeftMouseDown);
  desktop_.input().send(KeyDown);
  queue_.runPending();
  EXPECT_EQ(approaches_, 0);
}

TEST_F(HotCornerWatcherTest, WithoutAMainScreenNothingChanges) {
  move(1, 899);
  desktop_.removeDisplay("Main");
  move(500, 500);
  desktop_.addDisplay({.identifier = "Main", .frame = {0, 0, 1440, 900}});
  move(1, 899);
  EXPECT_EQ(approaches_, 1) << "it was never seen outside";
}

TEST_F(HotCornerWatcherTest, OnlyTheMainScreenHasTheCorner) {
  desktop_.addDisplay({.identifier = "Left", .frame = {-800, 0, 800, 600}});
  move(-799, 599);
  EXPECT_EQ(approaches_, 0);
}

TEST_F(HotCornerWatcherTest, TheCornerIsTheMainScreensAndNotTheFirstOnes) {
  desktop_.addDisplay({.identifier = "Left", .frame = {-800, 0, 800, 600}});
  desktop_.activate(desktop_.spaceIDs().back());
  move(1, 899);
  EXPECT_EQ(approaches_, 0);
  move(-799, 599);
  EXPECT_EQ(approaches_, 1);
}

TEST_F(HotCornerWatcherTest, TheCallComesAfterTheEventIsHandled) {
  desktop_.input().moveMouse({1, 899});
  EXPECT_EQ(approaches_, 0);
  queue_.runPending();
  EXPECT_EQ(approaches_, 1);
}

TEST_F(HotCornerWatcherTest, ASecondStartFiresNoSecondTime) {
  watcher_->start();
  move(1, 899);
  EXPECT_EQ(approaches_, 1);
}

TEST_F(HotCornerWatcherTest, NothingIsCalledAfterTheWatcherIsGone) {
  desktop_.input().moveMouse({1, 899});
  watcher_.reset();
  queue_.runPending();
  move(50, 50);
  move(1, 899);
  EXPECT_EQ(approaches_, 0);
}

}  // namespace
}  // namespace vembrix
