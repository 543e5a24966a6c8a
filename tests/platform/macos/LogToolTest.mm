#include "platform/LogTool.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

namespace vembrix {
namespace {

TEST(LogToolTest, ShowsTheProgramsLinesOfTheUnifiedLog) {
  const LogCommand& command = LogTool::shared().command();
  EXPECT_EQ(access(command.executable.c_str(), X_OK), 0) << command.executable;
  EXPECT_EQ(command.shellText,
            "log show --predicate 'process == \"Vembrix\"' --last 10m --style compact");
  std::string typed = "log";
  for (const std::string& argument : command.arguments) {
    const bool isPredicate = argument.find(' ') != std::string::npos;
    typed += isPredicate ? " '" + argument + "'" : " " + argument;
  }
  EXPECT_EQ(typed, command.shellText);
}

}  // namespace
}  // namespace vembrix
