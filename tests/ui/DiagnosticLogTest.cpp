#include "ui/DiagnosticLog.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

#include "platform/embedded/services/EmbeddedBackgroundWork.h"
#include "platform/embedded/services/EmbeddedLogTool.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "platform/embedded/services/EmbeddedPasteboard.h"
#include "support/SettingsPages.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr const char* kCopyLog = "Copy Diagnostic Log to Clipboard";
constexpr const char* kCommand =
    "log show --predicate 'process == \"Vembrix\"' --last 10m --style compact";
constexpr const char* kNothing =
    "(no log output \u2014 make sure you reproduced the issue recently)";

TEST(DiagnosticLogCountTest, LinesThatAreNotEmptyAreCounted) {
  EXPECT_EQ(countLines(""), 0U);
  EXPECT_EQ(countLines("\n"), 0U);
  EXPECT_EQ(countLines("\n\n\n"), 0U);
  EXPECT_EQ(countLines("one"), 1U);
  EXPECT_EQ(countLines("one\n"), 1U);
  EXPECT_EQ(countLines("\n\none\n\n"), 1U);
  EXPECT_EQ(countLines("one\n\ntwo\n"), 2U);
  EXPECT_EQ(countLines("one\r\n\r\ntwo"), 3U) << "a carriage return is part of a line";
  EXPECT_EQ(countLines(" \n\t"), 2U);
}

TEST(DiagnosticLogCountTest, OnlyOneLineIsSingular) {
  EXPECT_EQ(copiedLinesStatus(0), "Copied 0 log lines to clipboard.");
  EXPECT_EQ(copiedLinesStatus(1), "Copied 1 log line to clipboard.");
  EXPECT_EQ(copiedLinesStatus(2), "Copied 2 log lines to clipboard.");
  EXPECT_EQ(copiedLinesStatus(1000000), "Copied 1000000 log lines to clipboard.");
}

class DiagnosticLogTest : public SettingsPages {
 protected:
  void prints(std::string bytes) {
    tool_.setScript([bytes = std::move(bytes)] { return LogTool::Output{bytes}; });
  }
  /// Runs the tool to its end and the main queue after it.
  void finish() {
    work_.run();
    queue_.runPending();
  }
  std::string copied() {
    open("Diagnostics");
    window().click(kCopyLog);
    finish();
    return pasteboard_.text();
  }
  std::string status() { return window().status(kDiagnosticsStatusID).text; }

  EmbeddedLogTool& tool_ = EmbeddedLogTool::shared();
  EmbeddedBackgroundWork& work_ = EmbeddedBackgroundWork::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  EmbeddedPasteboard& pasteboard_ = EmbeddedPasteboard::shared();
};

TEST_F(DiagnosticLogTest, CopyingDisablesTheButtonUntilItIsDoneAndSaysSo) {
  prints("a line\n");
  open("Diagnostics");
  EXPECT_EQ(status(), "");
  window().click(kCopyLog);
  EXPECT_FALSE(window().button(kCopyLog).isEnabled);
  EXPECT_EQ(status(), "Gathering log\u2026");
  work_.run();
  EXPECT_FALSE(window().button(kCopyLog).isEnabled) << "the main queue has not heard of it";
  queue_.runPending();
  EXPECT_TRUE(window().button(kCopyLog).isEnabled);
  EXPECT_EQ(status(), "Copied 1 log line to clipboard.");
}

TEST_F(DiagnosticLogTest, ALineAnEmptyLineASecondLineAndAFinalNewlineAreTwoLines) {
  prints("first\n\nsecond\n");
  EXPECT_EQ(copied(), "first\n\nsecond\n");
  EXPECT_EQ(status(), "Copied 2 log lines to clipboard.");
}

TEST_F(DiagnosticLogTest, ThePasteboardHoldsOnlyPlainTextAfterEitherButton) {
  prints("a line");
  pasteboard_.put("public.html", "<b>before</b>");
  copied();
  EXPECT_THAT(pasteboard_.contents(), ElementsAre(Pair(EmbeddedPasteboard::kPlainText, "a line")));
  pasteboard_.put("public.html", "<b>between</b>");
  window().click("Copy Command");
  EXPECT_THAT(pasteboard_.contents(), ElementsAre(Pair(EmbeddedPasteboard::kPlainText, kCommand)));
}

TEST_F(DiagnosticLogTest, CopyCommandSaysSo) {
  open("Diagnostics");
  window().click("Copy Command");
  EXPECT_EQ(status(), "Command copied to clipboard.");
}

TEST_F(DiagnosticLogTest, WhatTheClipboardDoesNotHoldIsNotSaidToBeCopied) {
  prints("a line");
  pasteboard_.put(EmbeddedPasteboard::kPlainText, "theirs");
  pasteboard_.take();
  EXPECT_EQ(copied(), "theirs");
  EXPECT_EQ(status(), "The clipboard is in use. Try again.");
  window().click("Copy Command");
  EXPECT_EQ(status(), "The clipboard is in use. Try again.");
}

TEST_F(DiagnosticLogTest, TheCommandIsShownAsItIsCopied) {
  const auto& row = std::get<FullRow>(open("Diagnostics").tab().form.rows[6]);
  const auto& field = std::get<CommandField>(row.control);
  EXPECT_EQ(field.text, kCommand);
  EXPECT_EQ(field.style.font, (Font{.design = Font::Design::Monospaced, .size = 11}));
}

TEST_F(DiagnosticLogTest, WithoutTheToolTheTextExplainsItAndGivesTheCommand) {
  tool_.setScript([] { return LogTool::LaunchFailure{"The file does not exist."}; });
  EXPECT_EQ(copied(), std::string("Failed to run log command: The file does not exist.\n\nRun this "
                                  "in Terminal instead:\n") +
                          kCommand);
  EXPECT_EQ(status(), "Copied 3 log lines to clipboard.");
}

TEST_F(DiagnosticLogTest, WithoutOutputASentenceIsCopiedAsOneLine) {
  prints("");
  EXPECT_EQ(copied(), kNothing);
  EXPECT_EQ(status(), "Copied 1 log line to clipboard.");
}

TEST_F(DiagnosticLogTest, OutputThatIsNotUtf8CountsAsNone) {
  for (const char* bytes : {"\xff\xfe", "good line\n\xc3", "\xc0\xaf", "\xed\xa0\x80"}) {
    prints(bytes);
    EXPECT_EQ(copied(), kNothing);
    EXPECT_EQ(status(), "Copied 1 log line to clipboard.");
  }
}

TEST_F(DiagnosticLogTest, OutputIsNeitherTrimmedNorChanged) {
  std::string text = "  \n\tZ\u00fcrich \u2014 \U0001F5A5\r\n";
  text.push_back('\0');
  text += "after a zero\n\n";
  prints(text);
  EXPECT_EQ(copied(), text);
}

TEST_F(DiagnosticLogTest, OnlyEmptyLinesAreCopiedAndCountedAsNone) {
  prints("\n\n");
  EXPECT_EQ(copied(), "\n\n");
  EXPECT_EQ(status(), "Copied 0 log lines to clipboard.");
}

TEST_F(DiagnosticLogTest, WhatTheToolPrintsAsAnErrorIsCopiedLikeOutput) {
  prints("log: Bad predicate\n");
  EXPECT_EQ(copied(), "log: Bad predicate\n");
  EXPECT_EQ(status(), "Copied 1 log line to clipboard.");
}

TEST_F(DiagnosticLogTest, FiftyMegabytesAreCopiedWhole) {
  constexpr std::size_t kLines = 500'000;
  constexpr std::size_t kLength = 100;
  std::string text;
  text.reserve(kLines * kLength);
  for (std::size_t i = 0; i < kLines; ++i) text.append(kLength - 1, 'x').push_back('\n');
  prints(text);
  EXPECT_EQ(copied().size(), kLines * kLength);
  EXPECT_EQ(status(), "Copied 500000 log lines to clipboard.");
}

TEST_F(DiagnosticLogTest, TheToolRunsOnAnotherThread) {
  std::thread::id thread;
  tool_.setScript([&] {
    thread = std::this_thread::get_id();
    return LogTool::Output{};
  });
  copied();
  EXPECT_NE(thread, std::thread::id());
  EXPECT_NE(thread, std::this_thread::get_id());
}

TEST_F(DiagnosticLogTest, TheMainQueueRunsWhileTheToolDoes) {
  open("Diagnostics");
  window().click(kCopyLog);
  bool ran = false;
  queue_.async([&] { ran = true; });
  queue_.advance(std::chrono::hours(1));
  EXPECT_TRUE(ran);
  EXPECT_EQ(status(), "Gathering log\u2026") << "nothing limits how long the tool may take";
  EXPECT_EQ(pasteboard_.text(), "");
}

TEST_F(DiagnosticLogTest, ASecondClickWhileGatheringDoesNothing) {
  open("Diagnostics");
  window().click(kCopyLog);
  window().click(kCopyLog);
  PreferencesWindowController::shared().copyDiagnosticLog();
  EXPECT_EQ(work_.waitingCount(), 1U);
  finish();
  window().click(kCopyLog);
  EXPECT_EQ(work_.waitingCount(), 1U);
}

TEST_F(DiagnosticLogTest, InThePlainTabViewItWorksTheSame) {
  prints("a line\n");
  open("Diagnostics", "Stock");
  window().click(kCopyLog);
  EXPECT_FALSE(window().button(kCopyLog).isEnabled);
  finish();
  EXPECT_EQ(status(), "Copied 1 log line to clipboard.");
  EXPECT_TRUE(window().button(kCopyLog).isEnabled);
}

TEST_F(DiagnosticLogTest, AnotherTabMeanwhileLosesNothing) {
  prints("a line\n");
  open("Diagnostics", "Alpine");
  window().click(kCopyLog);
  window().clickTab(0);
  window().clickTab(4);
  EXPECT_FALSE(window().button(kCopyLog).isEnabled);
  EXPECT_EQ(status(), "Gathering log\u2026");
  window().clickTab(0);
  finish();
  window().clickTab(4);
  EXPECT_EQ(status(), "Copied 1 log line to clipboard.");
  EXPECT_TRUE(window().button(kCopyLog).isEnabled);
}

TEST_F(DiagnosticLogTest, FreshContentMeanwhileIsToldOfTheEnd) {
  prints("a line\n");
  open("Diagnostics", "Alpine");
  window().click(kCopyLog);
  open("Diagnostics", "Stock");
  EXPECT_FALSE(window().button(kCopyLog).isEnabled);
  EXPECT_EQ(status(), "Gathering log\u2026");
  finish();
  EXPECT_TRUE(window().button(kCopyLog).isEnabled);
  EXPECT_EQ(status(), "Copied 1 log line to clipboard.");
}

TEST_F(DiagnosticLogTest, FreshContentHasAnEmptyStatus) {
  copied();
  EXPECT_NE(status(), "");
  open("Diagnostics");
  EXPECT_EQ(status(), "");
}

TEST_F(DiagnosticLogTest, AClosedWindowDoesNotStopTheCopying) {
  prints("a line\n");
  open("Diagnostics");
  window().click(kCopyLog);
  window().close();
  finish();
  EXPECT_EQ(pasteboard_.text(), "a line\n");
}

}  // namespace
}  // namespace vembrix
