#include "platform/macos/UnifiedLogCommand.h"

#include <gmock/gmock.h>

#include "platform/embedded/services/EmbeddedLogTool.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

TEST(UnifiedLogCommandTest, IsTheSystemsToolWithThePredicateAsOneArgument) {
  const LogCommand command = unifiedLogCommand();
  EXPECT_EQ(command.executable, "/usr/bin/log");
  EXPECT_THAT(command.arguments, ElementsAre("show", "--predicate", "process == \"Vembrix\"",
                                             "--last", "10m", "--style", "compact"));
  EXPECT_EQ(command.shellText,
            "log show --predicate 'process == \"Vembrix\"' --last 10m --style compact");
}

TEST(UnifiedLogCommandTest, TheToolOfTheTestsHasTheSameCommand) {
  EXPECT_EQ(EmbeddedLogTool::shared().command(), unifiedLogCommand());
}

}  // namespace
}  // namespace vembrix
