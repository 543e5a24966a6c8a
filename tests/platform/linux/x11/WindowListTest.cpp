#include "platform/linux/x11/WindowList.h"

#include <gmock/gmock.h>

#include <chrono>

#include "platform/Application.h"
#include "platform/WindowServer.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

class WindowListTest : public testing::Test {
 protected:
  WindowListTest() {
    display_.startWindowManager();
    TestSession::setVariable("VEMBRIX_DESKTOP", "x11");
    Application::shared();
  }

  X11Client& client() { return display_.client(); }

  static PropertyList list() {
    return WindowServer::shared().CGWindowListCopyWindowInfo(WindowServer::onScreenOnly |
                                                             WindowServer::excludeDesktopElements);
  }

  /// Returns the owners of the windows that have one, front to back.
  static std::vector<std::string> owners() {
    std::vector<std::string> owners;
    const PropertyList all = list();
    for (const PropertyList& window : *all.asArray()) {
      if (const std::string* owner = window["kCGWindowOwnerName"].asString()) {
        owners.push_back(*owner);
      }
    }
    return owners;
  }
  static bool runUntilOwnersAre(const std::vector<std::string>& expected) {
    return runUntil([&] { return owners() == expected; });
  }

  TestSession session_;
  PrivateDisplay display_;
};

TEST_F(WindowListTest, KnowsWindowsThatWereThereBefore) {
  EXPECT_TRUE(client().showWindow("Editor", 1000, 600));
  EXPECT_TRUE(client().showWindow("Browser", 900, 500));
  EXPECT_THAT(owners(), ElementsAre("Browser", "Editor"));
}

TEST_F(WindowListTest, FollowsWindowsThatComeAndGo) {
  EXPECT_THAT(owners(), IsEmpty());
  EXPECT_TRUE(client().showWindow("Editor", 1000, 600));
  EXPECT_TRUE(runUntilOwnersAre({"Editor"}));
  {
    X11Client other(display_.name());
    EXPECT_TRUE(other.showWindow("Browser", 900, 500));
    EXPECT_TRUE(runUntilOwnersAre({"Browser", "Editor"}));
  }
  EXPECT_TRUE(runUntilOwnersAre({"Editor"}));
}

TEST_F(WindowListTest, WindowsOfOtherDesktopsAreNotOnTheScreen) {
  EXPECT_TRUE(client().showWindow("Editor", 1000, 600));
  EXPECT_TRUE(runUntilOwnersAre({"Editor"}));
  EXPECT_TRUE(client().goToDesktop(1));
  EXPECT_TRUE(runUntilOwnersAre({}));
  EXPECT_TRUE(client().goToDesktop(0));
  EXPECT_TRUE(runUntilOwnersAre({"Editor"}));
}

TEST_F(WindowListTest, AnAnswerIsSharedWhileNothingChanges) {
  EXPECT_TRUE(client().showWindow("Editor", 1000, 600));
  EXPECT_TRUE(runUntilOwnersAre({"Editor"}));
  runFor(milliseconds(100));
  EXPECT_EQ(list().asArray(), list().asArray());
}

TEST_F(WindowListTest, WindowsSmallerThanHalfOfTheScreenAreLeftOut) {
  EXPECT_TRUE(client().showWindow("Editor", 1000, 600));
  X11Client other(display_.name());
  EXPECT_TRUE(other.showWindow("Clock", 100, 50));
  runFor(milliseconds(100));
  EXPECT_THAT(owners(), ElementsAre("Editor"));
  other.resize(other.focus(), 1000, 600);
  EXPECT_TRUE(runUntilOwnersAre({"Clock", "Editor"}));
}

TEST_F(WindowListTest, ProgramsThatShowAllWindowsCountAsTheDock) {
  for (const char* name : {"skippy-xd", "xfdashboard"}) {
    X11Client overview(display_.name());
    EXPECT_TRUE(overview.showWindow(name, 1440, 900));
    EXPECT_TRUE(runUntilOwnersAre({"Dock"})) << name;
  }
}

}  // namespace
}  // namespace vembrix
