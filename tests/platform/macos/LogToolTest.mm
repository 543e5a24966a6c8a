#include "platform/LogTool.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <thread>

#include "platform/macos/RunCommand.h"

namespace vembrix {
namespace {

/// As the product runs it: not on the main thread.
LogTool::Result run(const LogCommand& command) {
  LogTool::Result result;
  std::thread([&] { result = runCommand(command); }).join();
  return result;
}

std::string outputOf(const std::string& script) {
  const auto result = run({"/bin/sh", {"-c", script}, {}});
  const auto* output = std::get_if<LogTool::Output>(&result);
  return output ? output->bytes : "not started";
}

int openDescriptors() {
  int count = 0;
  DIR* descriptors = opendir("/dev/fd");
  while (readdir(descriptors)) count += 1;
  closedir(descriptors);
  return count;
}

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

TEST(LogToolTest, GivesTheToolItsArguments) {
  const auto result = run({"/usr/bin/printf", {"%s|", "a b", "\"", "", "\u00E9"}, {}});
  EXPECT_EQ(std::get<LogTool::Output>(result).bytes, "a b|\"||\u00E9|");
}

TEST(LogToolTest, WithoutTheToolSaysWhy) {
  const auto result = run({"/no/such/tool", {}, {}});
  ASSERT_TRUE(std::holds_alternative<LogTool::LaunchFailure>(result));
  EXPECT_FALSE(std::get<LogTool::LaunchFailure>(result).description.empty());
}

TEST(LogToolTest, WhatMayNotRunIsAFailure) {
  EXPECT_TRUE(std::holds_alternative<LogTool::LaunchFailure>(run({"/etc/hosts", {}, {}})));
}

TEST(LogToolTest, KeepsBothOutputsInTheirOrder) {
  EXPECT_EQ(outputOf("echo out; echo error >&2; echo again"), "out\nerror\nagain\n");
}

TEST(LogToolTest, TheExitStatusDoesNotCount) {
  EXPECT_EQ(outputOf("echo no >&2; exit 3"), "no\n");
  EXPECT_EQ(outputOf("echo killed; kill -9 $$"), "killed\n");
}

TEST(LogToolTest, NoOutputIsEmpty) { EXPECT_EQ(outputOf("exit 0"), ""); }

TEST(LogToolTest, BytesComeAsTheyAre) {
  EXPECT_EQ(outputOf("printf 'a\\000\\377\\376z'"), std::string("a\0\xFF\xFEz", 5));
}

TEST(LogToolTest, TheToolHasNothingToRead) {
  EXPECT_EQ(outputOf("read line && echo got || echo end"), "end\n");
}

TEST(LogToolTest, FiftyMegabytesArriveWhole) {
  EXPECT_EQ(outputOf("/usr/bin/head -c 52428800 /dev/zero").size(), 52428800U);
}

TEST(LogToolTest, LeavesNoDescriptorOpen) {
  outputOf("exit 0");
  run({"/no/such/tool", {}, {}});
  const int before = openDescriptors();
  for (int i = 0; i < 20; ++i) {
    outputOf("exit 0");
    run({"/no/such/tool", {}, {}});
  }
  EXPECT_EQ(openDescriptors(), before);
}

}  // namespace
}  // namespace vembrix
