#include "platform/LogTool.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "platform/linux/TemporaryDirectory.h"
#include "platform/linux/TestSession.h"

namespace vembrix {
namespace {

/// A journalctl of the test's own is the only one that is found.
class LogToolTest : public testing::Test {
 protected:
  LogToolTest() { TestSession::setVariable("PATH", tools_.path().string()); }

  void putTool(const std::string& script) {
    const std::filesystem::path path = tools_.path() / "journalctl";
    std::ofstream(path) << "#!/bin/sh\n" << script << "\n";
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  }

  /// As the product runs it: not on the main thread.
  static LogTool::Result run() {
    LogTool::Result result;
    std::thread([&] { result = LogTool::shared().run(); }).join();
    return result;
  }
  static std::string output() { return std::get<LogTool::Output>(run()).bytes; }

  TestSession session_;
  TemporaryDirectory tools_;
};

TEST_F(LogToolTest, ShowsTheProgramsEntriesInTheJournal) {
  const LogCommand& command = LogTool::shared().command();
  EXPECT_EQ(command.executable, "journalctl");
  EXPECT_EQ(command.shellText, "journalctl --identifier=Vembrix --since=-10min --output=short-iso");
  std::string typed = command.executable;
  for (const std::string& argument : command.arguments) typed += " " + argument;
  EXPECT_EQ(typed, command.shellText);
}

TEST_F(LogToolTest, GivesTheToolItsArguments) {
  putTool("printf '%s|' \"$@\"");
  EXPECT_EQ(output(), "--identifier=Vembrix|--since=-10min|--output=short-iso|");
}

TEST_F(LogToolTest, WithoutTheToolSaysWhy) {
  const auto result = run();
  ASSERT_TRUE(std::holds_alternative<LogTool::LaunchFailure>(result));
  EXPECT_EQ(std::get<LogTool::LaunchFailure>(result).description,
            "journalctl: No such file or directory");
}

TEST_F(LogToolTest, AToolThatMayNotRunIsAFailure) {
  putTool("echo no");
  std::filesystem::permissions(tools_.path() / "journalctl", std::filesystem::perms::owner_read);
  EXPECT_TRUE(std::holds_alternative<LogTool::LaunchFailure>(run()));
}

TEST_F(LogToolTest, KeepsBothOutputsInTheirOrder) {
  putTool("echo out; echo error >&2; echo again");
  EXPECT_EQ(output(), "out\nerror\nagain\n");
}

TEST_F(LogToolTest, TheExitStatusDoesNotCount) {
  putTool("echo 'No journal files were found.' >&2; exit 3");
  EXPECT_EQ(output(), "No journal files were found.\n");
}

TEST_F(LogToolTest, NoOutputIsEmpty) {
  putTool("exit 0");
  EXPECT_EQ(output(), "");
}

TEST_F(LogToolTest, BytesComeAsTheyAre) {
  putTool("printf 'a\\000\\377\\376z'");
  EXPECT_EQ(output(), std::string("a\0\xFF\xFEz", 5));
}

TEST_F(LogToolTest, TheToolHasNothingToRead) {
  putTool("read line && echo got || echo end");
  EXPECT_EQ(output(), "end\n");
}

TEST_F(LogToolTest, FiftyMegabytesArriveWhole) {
  putTool("/usr/bin/head -c 52428800 /dev/zero");
  EXPECT_EQ(output().size(), 52428800U);
}

TEST_F(LogToolTest, LeavesNoDescriptorOpen) {
  const auto open = [] {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
  };
  putTool("echo");
  output();
  const auto before = open();
  for (int i = 0; i < 20; ++i) output();
  std::filesystem::remove(tools_.path() / "journalctl");
  for (int i = 0; i < 20; ++i) run();
  EXPECT_EQ(open(), before);
}

}  // namespace
}  // namespace vembrix
