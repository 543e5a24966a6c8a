#include "platform/linux/x11/X11DesktopTest.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <future>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/NotificationCenter.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"
#include "platform/linux/x11/DesktopNames.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

TEST_F(X11DesktopTest, TakesTheWindowManagersDesktopsForSpaces) {
  const PropertyList answer = desktop_->managedDisplaySpaces();
  ASSERT_NE(answer.asArray(), nullptr);
  EXPECT_EQ((*answer.asArray())[0]["Display Identifier"], PropertyList("Main"));
  const PropertyList space = (*(*answer.asArray())[0]["Spaces"].asArray())[1];
  EXPECT_EQ(space,
            PropertyList(PropertyList::Dictionary{
                {"ManagedSpaceID", 2}, {"id64", 2}, {"uuid", "x11-desktop-2"}, {"type", 0}}));
}

TEST_F(X11DesktopTest, ReadingAsksTheServerNothing) {
  ASSERT_TRUE(client().goToDesktop(2));
  ASSERT_TRUE(runUntilActive(3));
  // The server does not answer: everything must have been read already.
  display_.server().stop();
  std::promise<void> isRead;
  bool isWaitedFor = false;
  std::thread later([&] {
    const auto limit = std::chrono::seconds(30);
    isWaitedFor = isRead.get_future().wait_for(limit) == std::future_status::timeout;
    display_.server().resume();
  });
  EXPECT_EQ(count(), 4U);
  EXPECT_EQ(desktop_->activeSpace(), 3U);
  desktop_->setName(3, "Mail");
  desktop_->activate(1);
  isRead.set_value();
  later.join();
  EXPECT_FALSE(isWaitedFor);
  EXPECT_TRUE(runUntilActive(1));
}

TEST_F(X11DesktopTest, WhatComesInTogetherIsAnnouncedOnce) {
  // This program does not read events meanwhile.
  ASSERT_TRUE(client().setDesktopCount(6));
  ASSERT_TRUE(client().goToDesktop(5));
  ASSERT_TRUE(client().goToDesktop(4));
  EXPECT_TRUE(runUntilActive(5));
  runFor(milliseconds(50));
  EXPECT_EQ(changes_, 1);
}

TEST_F(X11DesktopTest, AGoingThereAndBackMeanwhileIsNoChange) {
  ASSERT_TRUE(client().goToDesktop(2));
  ASSERT_TRUE(client().goToDesktop(0));
  runFor(milliseconds(50));
  EXPECT_EQ(changes_, 0);
}

TEST_F(X11DesktopTest, OtherPropertiesOfTheRootAreNoChange) {
  setRoot("_NET_DESKTOP_NAMES", {"UTF8_STRING", 8, std::string("one\0two\0", 8)});
  setRoot("_NET_WORKAREA", {"CARDINAL", 32, cardinals({0, 0, 100, 100})});
  setRoot("_NET_CURRENT_DESKTOP", {"CARDINAL", 32, cardinals({0})});
  runFor(milliseconds(50));
  EXPECT_EQ(changes_, 0);
}

// Other window managers

TEST_F(X11DesktopTest, AKilledWindowManagerLeavesNoSpaces) {
  ASSERT_TRUE(client().goToDesktop(1));
  ASSERT_TRUE(runUntilActive(2));
  changes_ = 0;
  display_.killWindowManager();
  // The former window manager leaves its properties behind.
  EXPECT_THAT(client().cardinals(client().root(), "_NET_NUMBER_OF_DESKTOPS"), ElementsAre(4));
  EXPECT_TRUE(runUntilCount(std::nullopt));
  EXPECT_EQ(desktop_->activeSpace(), 0U);
  EXPECT_EQ(changes_, 1);
  desktop_->activate(1);
  desktop_->setName(1, "Mail");
  runFor(milliseconds(20));
  EXPECT_EQ(changes_, 1);
}

TEST_F(X11DesktopTest, TheNextWindowManagerBringsSpacesBack) {
  for (int i = 0; i < 3; ++i) {
    display_.killWindowManager();
    EXPECT_TRUE(runUntilCount(std::nullopt));
    display_.startWindowManager();
    EXPECT_TRUE(runUntilCount(4));
    ASSERT_TRUE(client().goToDesktop(2));
    EXPECT_TRUE(runUntilActive(3));
    desktop_->activate(1);
    EXPECT_TRUE(runUntilActive(1));
  }
}

TEST_F(X11DesktopTest, AReplacedWindowManagerIsNoticedAllTheSame) {
  display_.killWindowManager();
  display_.startWindowManager();
  ASSERT_TRUE(client().setDesktopCount(5));
  EXPECT_TRUE(runUntilCount(5));
}

class EmptyX11DesktopTest : public X11DesktopTest {
 protected:
  EmptyX11DesktopTest() : X11DesktopTest(WindowManager::None) {}
};

TEST_F(EmptyX11DesktopTest, WithoutAWindowManagerThereAreNoSpaces) {
  EXPECT_EQ(count(), std::nullopt);
  EXPECT_EQ(desktop_->activeSpace(), 0U);
}

TEST_F(EmptyX11DesktopTest, PropertiesAloneAreNoWindowManager) {
  setRoot("_NET_NUMBER_OF_DESKTOPS", {"CARDINAL", 32, cardinals({4})});
  setRoot("_NET_CURRENT_DESKTOP", {"CARDINAL", 32, cardinals({0})});
  const std::uint32_t root = client().root();
  for (const std::uint32_t claim : {0U, 0x7fffffffU, root}) {
    setRoot("_NET_SUPPORTING_WM_CHECK", {"WINDOW", 32, cardinals({claim})});
    runFor(milliseconds(20));
    EXPECT_EQ(count(), std::nullopt) << claim;
  }
  EXPECT_EQ(changes_, 0);
}

TEST_F(EmptyX11DesktopTest, AWindowManagerMayComeLater) {
  display_.startWindowManager();
  EXPECT_TRUE(runUntilCount(4));
  EXPECT_TRUE(runUntilActive(1));
  EXPECT_GE(changes_, 1);
}

/// A window manager that names its desktops by its configuration, played by this test.
class NamingWindowManagerTest : public EmptyX11DesktopTest {
 protected:
  NamingWindowManagerTest() {
    setCount(2);
    setRoot("_NET_CURRENT_DESKTOP", {"CARDINAL", 32, cardinals({0})});
    setNames({"web", "mail"});
    client().setProperty(window_, "_NET_SUPPORTING_WM_CHECK", {"WINDOW", 32, cardinals({window_})});
    setRoot("_NET_SUPPORTING_WM_CHECK", {"WINDOW", 32, cardinals({window_})});
  }

  void setCount(std::uint32_t count) {
    setRoot("_NET_NUMBER_OF_DESKTOPS", {"CARDINAL", 32, cardinals({count})});
  }
  void setNames(const std::vector<std::string>& names) {
    setRoot("_NET_DESKTOP_NAMES", {"UTF8_STRING", 8, desktopNamesProperty(names)});
  }
  void sayName() { client().setProperty(window_, "_NET_WM_NAME", {"UTF8_STRING", 8, "i3"}); }

  [[nodiscard]] std::vector<std::string> identifiers() const {
    std::vector<std::string> found;
    const PropertyList answer = desktop_->managedDisplaySpaces();
    if (answer.isNull()) return found;
    for (const PropertyList& space : *(*answer.asArray())[0]["Spaces"].asArray()) {
      found.push_back(*space["uuid"].asString());
    }
    return found;
  }

  const std::uint32_t window_ = client().showDock({0, 0, 10, 10});
};

TEST_F(NamingWindowManagerTest, IsKnownAsSuchAlsoWhenItSaysItsNameLater) {
  ASSERT_TRUE(runUntil([this] { return identifiers().size() == 2; }));
  EXPECT_THAT(identifiers(), ElementsAre("x11-desktop-1", "x11-desktop-2"));
  sayName();
  EXPECT_TRUE(runUntil([this] { return identifiers()[0] == "x11-name-web"; }));
}

TEST_F(NamingWindowManagerTest, ANewDesktopIsThereOnceItHasItsName) {
  sayName();
  ASSERT_TRUE(runUntil([this] { return identifiers().size() == 2; }));
  std::vector<std::vector<std::string>> lists;
  const Observation observation = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [&] { lists.push_back(identifiers()); });
  setCount(3);
  setRoot("_NET_CURRENT_DESKTOP", {"CARDINAL", 32, cardinals({2})});
  runFor(milliseconds(50));
  setNames({"web", "mail", "music"});
  ASSERT_TRUE(runUntil([this] { return identifiers().size() == 3; }));
  EXPECT_THAT(lists, ElementsAre(ElementsAre("x11-name-web", "x11-name-mail", "x11-name-music")));
}

TEST_F(NamingWindowManagerTest, TheDesktopsBeforeItsConfigurationIsReadAreNone) {
  sayName();
  setCount(1);
  setNames({"Desktop"});
  std::vector<std::vector<std::string>> lists;
  const Observation observation = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [&] { lists.push_back(identifiers()); });
  runFor(milliseconds(50));
  setCount(2);
  setNames({"I", "II"});
  ASSERT_TRUE(runUntil([this] { return identifiers().size() == 2; }));
  EXPECT_THAT(lists, ElementsAre(ElementsAre("x11-name-I", "x11-name-II")));
}

TEST_F(NamingWindowManagerTest, ADesktopThatGetsNoNameIsKnownByItsNumberAfterAWhile) {
  sayName();
  ASSERT_TRUE(runUntil([this] { return identifiers().size() == 2; }));
  setCount(3);
  ASSERT_TRUE(runUntil([this] { return identifiers().size() == 3; }));
  EXPECT_THAT(identifiers(), ElementsAre("x11-name-web", "x11-name-mail", "x11-desktop-3"));
}

TEST_F(EmptyX11DesktopTest, WaitsForSpacesNoLongerThanTold) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(desktop_->waitForSpaces(milliseconds(100)));
  EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(100));
  std::thread session([&] { display_.startWindowManager(); });
  EXPECT_TRUE(desktop_->waitForSpaces(std::chrono::seconds(10)));
  session.join();
}

// The end of the server

TEST_F(X11DesktopTest, EndsTheProgramInOneLineWhenTheServerGoes) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        display_.server().kill();
        runFor(std::chrono::seconds(30));
      },
      testing::ExitedWithCode(EXIT_FAILURE), testing::Eq("[Vembrix] the X server went away\n"));
}

TEST_F(X11DesktopTest, EndsTheProgramInOneLineWhenTheServerGoesWhileItIsTold) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        display_.server().kill();
        desktop_->setName(1, "Mail");
        desktop_->activate(2);
        runFor(std::chrono::seconds(30));
      },
      testing::ExitedWithCode(EXIT_FAILURE), testing::Eq("[Vembrix] the X server went away\n"));
}

}  // namespace
}  // namespace vembrix
