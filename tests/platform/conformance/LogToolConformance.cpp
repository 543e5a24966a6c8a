// The log's tool on platforms where it is a separate program, as it is not on the desktop in the
// process.

#include "platform/LogTool.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <thread>

#include "platform/conformance/LogToolUnderTest.h"

namespace vembrix {
namespace {

/// Runs the tool on another thread, as the product does.
LogTool::Result run(const LogToolUnderTest& tool) {
  LogTool::Result result;
  std::thread([&] { result = tool.run(); }).join();
  return result;
}

class LogToolConformance : public testing::Test {
 protected:
  std::string outputOf(const std::string& script) {
    tool_->becomeScript(script);
    const LogTool::Result result = run(*tool_);
    const auto* output = std::get_if<LogTool::Output>(&result);
    return output ? output->bytes : "not started";
  }

  const std::unique_ptr<LogToolUnderTest> tool_ = LogToolUnderTest::create();
};

TEST_F(LogToolConformance, GivesTheToolItsArguments) {
  std::string given;
  for (const std::string& argument : tool_->arguments()) given += argument + "|";
  ASSERT_NE(given, "");
  EXPECT_EQ(outputOf("printf '%s|' \"$@\""), given);
}

TEST_F(LogToolConformance, WithoutTheToolSaysWhy) {
  tool_->vanish();
  const LogTool::Result result = run(*tool_);
  ASSERT_TRUE(std::holds_alternative<LogTool::LaunchFailure>(result));
  EXPECT_NE(std::get<LogTool::LaunchFailure>(result).description, "");
}

TEST_F(LogToolConformance, AToolThatMayNotRunIsAFailure) {
  tool_->becomeScript("echo no");
  tool_->forbid();
  EXPECT_TRUE(std::holds_alternative<LogTool::LaunchFailure>(run(*tool_)));
}

TEST_F(LogToolConformance, KeepsBothOutputsInTheirOrder) {
  EXPECT_EQ(outputOf("echo out; echo error >&2; echo again"), "out\nerror\nagain\n");
}

TEST_F(LogToolConformance, TheExitStatusDoesNotCount) {
  EXPECT_EQ(outputOf("echo no >&2; exit 3"), "no\n");
  EXPECT_EQ(outputOf("echo killed; kill -9 $$"), "killed\n");
}

TEST_F(LogToolConformance, NoOutputIsEmpty) {
  EXPECT_EQ(outputOf("exit 0"), "");
}

TEST_F(LogToolConformance, BytesComeAsTheyAre) {
  EXPECT_EQ(outputOf("printf 'a\\000\\377\\376z'"), std::string("a\0\xFF\xFEz", 5));
}

TEST_F(LogToolConformance, TheToolHasNothingToRead) {
  EXPECT_EQ(outputOf("read line && echo got || echo end"), "end\n");
}

TEST_F(LogToolConformance, FiftyMegabytesArriveWhole) {
  EXPECT_EQ(outputOf("/usr/bin/head -c 52428800 /dev/zero").size(), 52428800U);
}

TEST_F(LogToolConformance, LeavesNoDescriptorOpen) {
  const auto open = [] {
    const std::filesystem::directory_iterator descriptors("/dev/fd");
    return std::distance(begin(descriptors), end(descriptors));
  };
  outputOf("exit 0");
  const auto before = open();
  for (int i = 0; i < 20; ++i) outputOf("exit 0");
  tool_->vanish();
  for (int i = 0; i < 20; ++i) run(*tool_);
  EXPECT_EQ(open(), before);
}

}  // namespace
}  // namespace vembrix
