#include <gtest/gtest.h>

#include <QDBusMessage>
#include <chrono>

#include "platform/Application.h"
#include "platform/NotificationCenter.h"
#include "platform/linux/support/PrivateBus.h"
#include "platform/linux/support/SentLines.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

class SleepWatcherTest : public testing::Test {
 protected:
  SleepWatcherTest() { TestSession::useNoScreen(); }

  TestSession session_;
  int wakes_ = 0;
  Observation observation_ =
      NotificationCenter::workspace().addObserver(notification::kDidWake, [this] { wakes_ += 1; });
};

TEST_F(SleepWatcherTest, TellsOfWakingNotOfFallingAsleep) {
  const PrivateBus bus;
  QDBusConnection manager = bus.connect("login manager");
  ASSERT_TRUE(manager.registerService("org.freedesktop.login1"));
  Application::shared();
  const auto announce = [&](bool isGoingToSleep) {
    QDBusMessage signal = QDBusMessage::createSignal(
        "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep");
    signal << isGoingToSleep;
    manager.send(signal);
  };
  announce(true);
  runFor(milliseconds(50));
  EXPECT_EQ(wakes_, 0);
  announce(false);
  EXPECT_TRUE(runUntil([&] { return wakes_ == 1; }));
  announce(true);
  announce(false);
  EXPECT_TRUE(runUntil([&] { return wakes_ == 2; }));
}

TEST_F(SleepWatcherTest, WithoutASystemBusNothingHappens) {
  Application::shared();
  runFor(milliseconds(20));
  EXPECT_EQ(wakes_, 0);
  EXPECT_TRUE(sentLines().empty());
}

}  // namespace
}  // namespace vembrix
