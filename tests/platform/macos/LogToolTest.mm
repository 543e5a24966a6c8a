#include "platform/LogTool.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/macos/UnifiedLogCommand.h"

namespace vembrix {
namespace {

TEST(LogToolTest, ShowsTheProgramsLinesOfTheUnifiedLog) {
  const LogCommand& command = LogTool::shared().command();
  EXPECT_TRUE(command == unifiedLogCommand());
  EXPECT_EQ(access(command.executable.c_str(), X_OK), 0) << command.executable;
}

}  // namespace
}  // namespace vembrix
