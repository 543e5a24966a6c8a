#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

class TerminationSignalsTest : public testing::TestWithParam<int> {
 protected:
  TerminationSignalsTest() { TestSession::useNoScreen(); }

  TestSession session_;
};

TEST_P(TerminationSignalsTest, EndTheEventLoopInOrder) {
  Application& application = Application::shared();
  bool wentOn = false;
  MainQueue::main().after(std::chrono::milliseconds(5), [&] {
    kill(getpid(), GetParam());
    // The present event is completed first.
    wentOn = true;
  });
  EXPECT_EQ(application.run(), 0);
  EXPECT_TRUE(wentOn);
}

TEST_P(TerminationSignalsTest, EndALoopThatStartsLater) {
  Application& application = Application::shared();
  kill(getpid(), GetParam());
  EXPECT_EQ(application.run(), 0);
}

INSTANTIATE_TEST_SUITE_P(Of, TerminationSignalsTest, testing::Values(SIGTERM, SIGINT),
                         [](const auto& info) { return info.param == SIGTERM ? "TERM" : "INT"; });

}  // namespace
}  // namespace vembrix
