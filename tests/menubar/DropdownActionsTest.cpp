#include <gmock/gmock.h>

#include <string>

#include "menubar/DropdownTest.h"
#include "menubar/SpaceRow.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

using std::chrono::seconds;
using testing::SizeIs;
using SpaceType = EmbeddedDesktop::SpaceType;

TEST_F(DropdownTest, AClickOnARowClosesTheMenuAndMovesTheUserThere) {
  open();
  row(2).clickName();
  EXPECT_FALSE(menu().isOpen());
  queue_.advance(seconds(2));
  EXPECT_EQ(activePlace(), 2U);
  EXPECT_EQ(strip(), " Desktop 3 ");
}

TEST_F(DropdownTest, WithoutThePermissionAClickMovesTheUserAtOnce) {
  desktop_.setTrusted(false);
  open();
  row(3).clickDot();
  queue_.runPending();
  EXPECT_EQ(activePlace(), 3U);
}

TEST_F(DropdownTest, AClickOnTheCurrentDesktopOnlyCloses) {
  open();
  row(0).clickName();
  EXPECT_FALSE(menu().isOpen());
  queue_.advance(seconds(2));
  EXPECT_EQ(activePlace(), 0U);
  EXPECT_EQ(desktop_.completedSwipes(), 0);
}

TEST_F(DropdownTest, TheArrowKeysAndReturnMoveTheUser) {
  open();
  menu().highlight(0);
  menu().highlight(1);
  menu().press(RowKey::Return);
  queue_.advance(seconds(2));
  EXPECT_EQ(activePlace(), 1U);
}

TEST_F(DropdownTest, ARowActsAlsoWhenTheMenuIsFilledAnewBeforeIt) {
  open();
  row(1).clickName();
  open();
  queue_.advance(seconds(2));
  EXPECT_EQ(activePlace(), 1U);
}

TEST_F(DropdownTest, AClickOnADesktopThatVanishedMeanwhileLeavesTheUserOnADesktop) {
  open();
  desktop_.removeSpace(desktop_.spaceAt(3));
  row(3).clickName();
  queue_.advance(seconds(2));
  EXPECT_LT(activePlace(), 3U);
  SpaceManager::shared().reload();
  EXPECT_EQ(SpaceManager::shared().activeSpaceID(), desktop_.activeSpace());
}

TEST_F(DropdownTest, AClickOnADesktopThatIsKnownToHaveVanishedDoesNothing) {
  for (const bool trusted : {true, false}) {
    desktop_.setTrusted(trusted);
    open();
    desktop_.removeSpace(desktop_.spaceAt(desktop_.spaceIDs().size() - 1));
    SpaceManager::shared().reload();
    menu().rows().back()->clickName();
    queue_.advance(seconds(2));
    EXPECT_EQ(activePlace(), 0U);
  }
}

TEST_F(DropdownTest, ARenameShowsAtOnceInTheRowAndOnTheStripAndTheMenuStaysOpen) {
  open();
  rename(0, "  Work 🛠 ");
  EXPECT_TRUE(menu().isOpen());
  EXPECT_EQ(row(0).state().label, "  Work 🛠 ");
  EXPECT_EQ(storedName(0), PropertyList(std::string("Work 🛠")));
  EXPECT_EQ(strip(), " Work 🛠 ");
  EXPECT_EQ(open().titles().front(), "Work 🛠");
}

TEST_F(DropdownTest, ABlankNameBringsTheDefaultBack) {
  open();
  rename(0, "Work");
  open();
  rename(0, "   ");
  EXPECT_EQ(row(0).state().label, "Work") << "the name that the menu opened with";
  EXPECT_TRUE(storedName(0).isNull());
  EXPECT_EQ(strip(), " Desktop 1 ");
  EXPECT_EQ(open().titles().front(), "Desktop 1");
}

TEST_F(DropdownTest, EscapeLeavesTheOldName) {
  open();
  row(0).hover();
  row(0).clickPencil();
  row(0).type("Work");
  menu().press(RowKey::Escape);
  EXPECT_TRUE(menu().isOpen());
  EXPECT_EQ(row(0).state().label, "Desktop 1");
  EXPECT_TRUE(storedName(0).isNull());
  EXPECT_EQ(strip(), " Desktop 1 ");
}

TEST_F(DropdownTest, ReturnWithoutAChangeStoresTheNameThatIsShown) {
  open();
  row(1).hover();
  row(1).clickPencil();
  menu().press(RowKey::Return);
  EXPECT_EQ(storedName(1), PropertyList(std::string("Desktop 2")));
  EXPECT_EQ(row(1).state().label, "Desktop 2");
}

TEST_F(DropdownTest, SeveralDesktopsAreRenamedInOneOpening) {
  open();
  rename(0, "Mail");
  rename(1, "Code");
  EXPECT_EQ(open().titles()[0], "Mail");
  EXPECT_EQ(menu().titles()[1], "Code");
}

TEST_F(DropdownTest, ARenamedDesktopThatVanishedMeanwhileKeepsItsNameForItsReturn) {
  open();
  desktop_.removeSpace(desktop_.spaceAt(3));
  SpaceManager::shared().reload();
  rename(3, "Gone");
  EXPECT_EQ(storedName(3), PropertyList(std::string("Gone")));
  EXPECT_THAT(open().rows(), SizeIs(3));
  menu().close();
  desktop_.addSpace("Main", SpaceType::Desktop, uuid(3));
  EXPECT_EQ(open().titles()[3], "Gone");
}

TEST_F(DropdownTest, AMenuFilledAnewDuringTheEditingForgetsWhatWasTyped) {
  open();
  row(0).hover();
  row(0).clickPencil();
  row(0).type("Wor");
  open();
  EXPECT_FALSE(row(0).state().isEditing);
  EXPECT_EQ(row(0).state().label, "Desktop 1");
  EXPECT_TRUE(storedName(0).isNull());
  EXPECT_EQ(RecordingSpaceRowView::liveCount(), 4);
  rename(0, "Work");
  EXPECT_EQ(strip(), " Work ");
}

TEST_F(DropdownTest, ACommandKeyDuringTheEditingIsText) {
  open();
  row(0).hover();
  row(0).clickPencil();
  menu().pressKeyEquivalent("q");
  EXPECT_TRUE(menu().isOpen());
  EXPECT_FALSE(EmbeddedApplication::shared().isTerminated());
}

TEST_F(DropdownTest, PreferencesBringsTheProgramToTheFront) {
  open();
  menu().choose("Preferences…");
  EXPECT_FALSE(menu().isOpen());
  EXPECT_EQ(EmbeddedApplication::shared().activationCount(), 1);
  open();
  menu().pressKeyEquivalent(",");
  EXPECT_EQ(EmbeddedApplication::shared().activationCount(), 2);
}

TEST_F(DropdownTest, QuitEndsTheProgram) {
  open();
  menu().pressKeyEquivalent("q");
  EXPECT_FALSE(menu().isOpen());
  EXPECT_TRUE(EmbeddedApplication::shared().isTerminated());
}

TEST_F(DropdownTest, ReturnOnASelectedCommandChoosesIt) {
  open();
  menu().highlight(7);
  menu().press(RowKey::KeypadEnter);
  EXPECT_TRUE(EmbeddedApplication::shared().isTerminated());
}

TEST_F(DropdownTest, CommandsOutliveTheControllerWithoutHarm) {
  open();
  const auto action = std::get<std::function<void()>>(menu().command("Preferences…")->action);
  controller_.reset();
  action();
  EXPECT_EQ(EmbeddedApplication::shared().activationCount(), 0);
}

}  // namespace
}  // namespace vembrix
