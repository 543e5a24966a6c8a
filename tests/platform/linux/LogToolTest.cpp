#include "platform/LogTool.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/linux/support/TemporaryDirectory.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

TEST(LogToolTest, ShowsTheProgramsEntriesInTheJournal) {
  const LogCommand& command = LogTool::shared().command();
  EXPECT_EQ(command.executable, "journalctl");
  EXPECT_EQ(command.shellText, "journalctl --identifier=Vembrix --since=-10min --output=short-iso");
  std::string typed = command.executable;
  for (const std::string& argument : command.arguments) typed += " " + argument;
  EXPECT_EQ(typed, command.shellText);
}

TEST(LogToolTest, WithoutTheToolNamesIt) {
  const TestSession session;
  const TemporaryDirectory nowhere;
  TestSession::setVariable("PATH", nowhere.path().string());
  const LogTool::Result result = LogTool::shared().run();
  ASSERT_TRUE(std::holds_alternative<LogTool::LaunchFailure>(result));
  EXPECT_EQ(std::get<LogTool::LaunchFailure>(result).description,
            "journalctl: No such file or directory");
}

}  // namespace
}  // namespace vembrix
