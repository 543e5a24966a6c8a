#include "platform/InputMonitor.h"

#include <gtest/gtest.h>

#include <chrono>

#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

constexpr EventMask kPresses[] = {LeftMouseDown, RightMouseDown, OtherMouseDown, KeyDown};

class InputMonitorConformance : public testing::Test {
 protected:
  InputMonitorConformance() { system_.showWindow("Editor", {600, 400}); }

  Token watch(std::uint64_t mask) {
    return input_.addGlobalMonitor(mask, [this] { told_ += 1; });
  }

  /// Returns the number of reports after all events have arrived.
  int toldInAll() {
    system_.runFor(milliseconds(150));
    return told_;
  }

  SystemUnderTest& system_ = SystemUnderTest::shared();
  InputMonitor& input_ = InputMonitor::shared();
  int told_ = 0;
};

TEST_F(InputMonitorConformance, TellsEachPressOfAWatchedKind) {
  for (const EventMask type : kPresses) {
    told_ = 0;
    const Token monitor = watch(type);
    ASSERT_TRUE(monitor);
    system_.press(type);
    system_.press(type);
    EXPECT_TRUE(system_.runUntil([&] { return told_ == 2; }, kPatience)) << "type " << type;
    EXPECT_EQ(toldInAll(), 2) << "type " << type;
  }
}

TEST_F(InputMonitorConformance, TellsNothingElse) {
  for (const EventMask type : kPresses) {
    const Token monitor = watch(type);
    system_.moveMouse({300, 600});
    for (const EventMask other : kPresses) {
      if (other != type) system_.press(other);
    }
    EXPECT_EQ(toldInAll(), 0) << "type " << type;
  }
}

TEST_F(InputMonitorConformance, OneMonitorMayWatchSeveralKinds) {
  const Token monitor = watch(LeftMouseDown | RightMouseDown | OtherMouseDown | KeyDown);
  for (const EventMask type : kPresses) system_.press(type);
  EXPECT_TRUE(system_.runUntil([&] { return told_ == 4; }, kPatience));
  EXPECT_EQ(toldInAll(), 4);
}

TEST_F(InputMonitorConformance, ADroppedMonitorIsToldNothing) {
  Token monitor = watch(KeyDown);
  system_.press(KeyDown);
  EXPECT_TRUE(system_.runUntil([&] { return told_ == 1; }, kPatience));
  monitor.reset();
  system_.press(KeyDown);
  EXPECT_EQ(toldInAll(), 1);
}

TEST_F(InputMonitorConformance, AHandlerMayEndItsOwnMonitorAndAddAnother) {
  Token second;
  Token first = input_.addGlobalMonitor(KeyDown, [&] {
    first.reset();
    second = watch(LeftMouseDown);
  });
  system_.press(KeyDown);
  EXPECT_TRUE(system_.runUntil([&] { return !first; }, kPatience));
  system_.press(KeyDown);
  EXPECT_EQ(toldInAll(), 0);
  system_.press(LeftMouseDown);
  EXPECT_TRUE(system_.runUntil([&] { return told_ == 1; }, kPatience));
}

TEST_F(InputMonitorConformance, KnowsWhereThePointerIs) {
  for (const Point place : {Point{300, 600}, Point{0, 900}, Point{700, 1}}) {
    system_.moveMouse(place);
    EXPECT_TRUE(system_.runUntil([&] { return input_.mouseLocation() == place; }, kPatience))
        << place.x << ", " << place.y;
  }
}

TEST_F(InputMonitorConformance, TellsOfMovementWithThePlaceThatItLedTo) {
  Point last;
  const Token monitor = input_.addGlobalMonitor(MouseMoved, [&] { last = input_.mouseLocation(); });
  for (const Point place : {Point{300, 600}, Point{10, 800}, Point{0, 900}}) {
    system_.moveMouse(place);
    EXPECT_TRUE(system_.runUntil([&] { return last == place; }, kPatience))
        << place.x << ", " << place.y;
  }
}

}  // namespace
}  // namespace vembrix
