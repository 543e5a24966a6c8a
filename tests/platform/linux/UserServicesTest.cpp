// Services for the user: the clipboard, addresses, and background threads.

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>

#include "platform/Application.h"
#include "platform/BackgroundWork.h"
#include "platform/LogTool.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"
#include "platform/linux/support/TemporaryDirectory.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

class UserServicesTest : public testing::Test {
 protected:
  UserServicesTest() {
    TestSession::useNoScreen();
    Application::shared();
    TestSession::setVariable("PATH", tools_.path().string());
  }

  void putTool(const std::string& name, const std::string& script) {
    const std::filesystem::path path = tools_.path() / name;
    std::ofstream(path) << "#!/bin/sh\n" << script << "\n";
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  }

  std::string opened() const {
    std::ifstream file(tools_.path() / "opened");
    return {std::istreambuf_iterator<char>(file), {}};
  }

  static const QMimeData& clipboard() { return *QGuiApplication::clipboard()->mimeData(); }

  TestSession session_;
  TemporaryDirectory tools_;
};

TEST_F(UserServicesTest, ATextTakesThePlaceOfAllThatIsThere) {
  auto data = std::make_unique<QMimeData>();
  data->setHtml("<b>bold</b>");
  data->setText("bold");
  QGuiApplication::clipboard()->setMimeData(data.release());
  int changes = 0;
  const auto connection =
      QObject::connect(QGuiApplication::clipboard(), &QClipboard::changed, [&] { changes += 1; });
  EXPECT_TRUE(Pasteboard::general().setString("Größe 日本 🛠\n\nend\n"));
  EXPECT_EQ(clipboard().text(), QString::fromUtf8("Größe 日本 🛠\n\nend\n"));
  EXPECT_FALSE(clipboard().hasHtml());
  EXPECT_EQ(changes, 1) << "in one step, so that nobody fills an empty clipboard";
  QObject::disconnect(connection);
}

TEST_F(UserServicesTest, OpensAnAddress) {
  putTool("xdg-open", "echo \"$#:$1\" > '" + (tools_.path() / "opened").string() + "'");
  Workspace::shared().openURL("https://example.org/a?b=c&d=%20e");
  EXPECT_TRUE(runUntil([&] { return opened() == "1:https://example.org/a?b=c&d=%20e\n"; }));
}

TEST_F(UserServicesTest, OpensNothingThatIsNoAddress) {
  putTool("xdg-open", "echo \"$1\" >> '" + (tools_.path() / "opened").string() + "'");
  for (const char* text : {"", "--help", "no address", "/etc/passwd"}) {
    Workspace::shared().openURL(text);
  }
  Workspace::shared().openURL("https://example.org/");
  ASSERT_TRUE(runUntil([&] { return !opened().empty(); }));
  EXPECT_EQ(opened(), "https://example.org/\n");
}

TEST_F(UserServicesTest, OpeningWithoutAProgramForItDoesNothing) {
  Workspace::shared().openURL("https://example.org/");
  EXPECT_EQ(opened(), "");
}

TEST_F(UserServicesTest, WorksOnAnotherThreadAndCompletesOnThisOne) {
  const auto main = std::this_thread::get_id();
  std::thread::id worker = main;
  std::thread::id completer;
  bool isDone = false;
  runInBackground([] { return std::this_thread::get_id(); },
                  [&](std::thread::id id) {
                    worker = id;
                    completer = std::this_thread::get_id();
                    isDone = true;
                  });
  EXPECT_FALSE(isDone);
  ASSERT_TRUE(runUntil([&] { return isDone; }));
  EXPECT_NE(worker, main);
  EXPECT_EQ(completer, main);
}

TEST_F(UserServicesTest, WorkThatWaitsKeepsNoOtherFromItsThread) {
  auto released = std::make_shared<std::atomic<bool>>(false);
  std::atomic<int> done = 0;
  for (int i = 0; i < 32; ++i) {
    BackgroundWork::shared().async([released, &done] {
      while (!*released) std::this_thread::sleep_for(milliseconds(1));
      done += 1;
    });
  }
  BackgroundWork::shared().async([released] { *released = true; });
  EXPECT_TRUE(runUntil([&] { return done == 32; }));
}

TEST_F(UserServicesTest, TheMainQueueRunsWhileALargeLogIsRead) {
  // The tool ends only if the main queue runs beside it.
  const std::filesystem::path beats = tools_.path() / "beats";
  putTool("journalctl", "/usr/bin/head -c 52428800 /dev/zero; until [ -e " + beats.string() +
                            " ]; do /bin/sleep 0.01; done");
  int count = 0;
  const TimerSource beat = MainQueue::main().repeat(milliseconds(5), milliseconds(5), [&] {
    if (++count == 10) std::ofstream(beats) << count;
  });
  bool isDone = false;
  runInBackground([] { return LogTool::shared().run(); },
                  [&](LogTool::Result result) {
                    EXPECT_EQ(std::get<LogTool::Output>(result).bytes.size(), 52428800U);
                    isDone = true;
                  });
  EXPECT_TRUE(runUntil([&] { return isDone; }));
}

}  // namespace
}  // namespace vembrix
