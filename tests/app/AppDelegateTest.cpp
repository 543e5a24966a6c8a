#include "app/AppDelegate.h"

#include <gmock/gmock.h>

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/faces/RecordingDropdownMenu.h"
#include "platform/embedded/faces/RecordingStatusItem.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

class AppDelegateTest : public testing::Test {
 protected:
  EmbeddedDesktop& desktop_ = EmbeddedDesktop::shared();
  AppDelegate delegate_;
};

TEST_F(AppDelegateTest, IsEmptyBeforeLaunch) {
  EXPECT_EQ(delegate_.observer(), nullptr);
  EXPECT_EQ(delegate_.menuBar(), nullptr);
  EXPECT_EQ(RecordingStatusItem::current(), nullptr);
}

TEST_F(AppDelegateTest, LaunchLoadsTheSpacesAndShowsTheTitle) {
  delegate_.applicationDidFinishLaunching();
  EXPECT_EQ(SpaceManager::shared().spaces().size(), 4U);
  EXPECT_NE(delegate_.observer(), nullptr);
  ASSERT_NE(RecordingStatusItem::current(), nullptr);
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Desktop 1 ");
  EXPECT_EQ(RecordingStatusItem::current()->setCount(), 1) << "one paint is enough for a launch";
}

TEST_F(AppDelegateTest, AfterLaunchTheTitleFollowsTheDesktop) {
  delegate_.applicationDidFinishLaunching();
  desktop_.activate(desktop_.spaceAt(2));
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Desktop 3 ");
  desktop_.removeSpace(desktop_.spaceAt(2));
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Desktop 2 ");
}

TEST_F(AppDelegateTest, StartingTheProgramAgainOpensTheDropdown) {
  EmbeddedApplication& app = EmbeddedApplication::shared();
  app.setDelegate(&delegate_);
  app.reopen();
  EXPECT_EQ(RecordingStatusItem::current(), nullptr) << "there is no dropdown before launch";

  delegate_.applicationDidFinishLaunching();
  auto& menu = dynamic_cast<RecordingDropdownMenu&>(*RecordingStatusItem::current()->menu());
  EXPECT_FALSE(menu.isOpen());
  app.reopen();
  EXPECT_TRUE(menu.isOpen());
  EXPECT_EQ(menu.rows().size(), 4U);

  menu.rows().at(1)->hover();
  menu.rows().at(1)->clickPencil();
  app.reopen();
  EXPECT_TRUE(menu.rows().at(1)->state().isEditing) << "an open dropdown stays as it is";
  app.setDelegate(nullptr);
}

TEST_F(AppDelegateTest, AfterLaunchTheDropdownSwitchesAndRenames) {
  delegate_.applicationDidFinishLaunching();
  EmbeddedMainQueue::shared().advance(std::chrono::minutes(1));
  ASSERT_EQ(desktop_.activeSpace(), desktop_.spaceAt(0)) << "the tour is over";

  RecordingStatusItem& item = *RecordingStatusItem::current();
  auto& menu = dynamic_cast<RecordingDropdownMenu&>(*item.menu());
  menu.open();
  RecordingSpaceRowView& third = *menu.rows().at(2);
  third.hover();
  third.clickPencil();
  third.type("Code");
  menu.press(RowKey::Return);
  third.clickName();
  EmbeddedMainQueue::shared().advance(std::chrono::seconds(2));
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(2));
  EXPECT_EQ(item.title(), " Code ");

  menu.open();
  EXPECT_EQ(menu.titles().at(2), "Code");
  EXPECT_EQ(menu.rows().at(2)->content().dotDescription, "current");
}

TEST_F(AppDelegateTest, SpacesPutIntoAnotherOrderInMissionControlAreNoticedWhenItCloses) {
  delegate_.applicationDidFinishLaunching();
  EmbeddedMainQueue& queue = EmbeddedMainQueue::shared();
  queue.advance(std::chrono::minutes(1));
  desktop_.activate(desktop_.spaceAt(3));
  desktop_.setMissionControl(true);
  queue.advance(std::chrono::seconds(1));
  desktop_.moveSpace(desktop_.spaceAt(3), 1);
  queue.advance(std::chrono::seconds(1));
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Desktop 4 ") << "nothing has told of it";
  desktop_.setMissionControl(false);
  queue.advance(std::chrono::seconds(1));
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Desktop 2 ");
}

TEST_F(AppDelegateTest, TheTourStarts1500msAfterTheEndOfLaunching) {
  EmbeddedMainQueue& queue = EmbeddedMainQueue::shared();
  queue.advance(std::chrono::seconds(10));
  int starts = 0;
  const Observation tour = NotificationCenter::defaultCenter().addObserver(
      SpaceManager::tourWillStart, [&] { starts += 1; });
  // Simulates a launch that takes a second.
  const Observation list = NotificationCenter::defaultCenter().addObserver(
      SpaceManager::didChange, [&] { queue.sleep(std::chrono::seconds(1)); });
  delegate_.applicationDidFinishLaunching();
  queue.advance(std::chrono::milliseconds(1499));
  EXPECT_EQ(starts, 0);
  queue.advance(std::chrono::milliseconds(1));
  EXPECT_EQ(starts, 1);
  queue.advance(std::chrono::minutes(1));
  EXPECT_EQ(starts, 1);
}

TEST_F(AppDelegateTest, TheUserIsAskedForAccessibilityOnceAndLaunchGoesOn) {
  desktop_.setTrusted(false);
  delegate_.applicationDidFinishLaunching();
  EXPECT_EQ(desktop_.promptCount(), 1);
  EXPECT_NE(RecordingStatusItem::current(), nullptr);
}

TEST_F(AppDelegateTest, ATrustedProcessAsksForNothing) {
  delegate_.applicationDidFinishLaunching();
  EXPECT_EQ(desktop_.promptCount(), 0);
}

TEST_F(AppDelegateTest, ADesktopWithoutSpacesOrScreensIsSurvived) {
  desktop_.removeDisplay("Main");
  delegate_.applicationDidFinishLaunching();
  EXPECT_EQ(RecordingStatusItem::current()->title(), "Desktops");
  desktop_.addDisplay({.identifier = "New", .frame = {0, 0, 800, 600}});
  EXPECT_EQ(RecordingStatusItem::current()->title(), " Desktop 1 ");
}

}  // namespace
}  // namespace vembrix
