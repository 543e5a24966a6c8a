#include "platform/linux/x11/DesktopNames.h"

#include <gmock/gmock.h>

namespace vembrix {
namespace {

using testing::ElementsAre;
using enum DesktopNames::Circumstances;
using Change = DesktopNames::Change;

constexpr Change kNothing{};
constexpr Change kOwnNames{.ownNames = true, .renamed = {}};

Change renamed(std::size_t desktop) {
  return {.ownNames = false, .renamed = desktop};
}

class DesktopNamesTest : public testing::Test {
 protected:
  DesktopNamesTest() { names_.take({"one", "two", "three"}, Settling); }

  DesktopNames names_;
};

TEST_F(DesktopNamesTest, AreTheWindowManagersOwn) {
  EXPECT_EQ(names_.ownName(1), "two");
  EXPECT_EQ(names_.ownName(3), "");
}

TEST_F(DesktopNamesTest, TheUsersNameIsWrittenAndTheOwnOneRemembered) {
  EXPECT_TRUE(names_.setName(1, "Mail"));
  EXPECT_THAT(names_.all(), ElementsAre("one", "Mail", "three"));
  EXPECT_EQ(names_.ownName(1), "two");
  EXPECT_TRUE(names_.clearName(1, "Desktop 2"));
  EXPECT_EQ(names_.ownName(1), "two");
  EXPECT_EQ(desktopNamesProperty(names_.all()), std::string("one\0two\0three\0", 14));
}

TEST_F(DesktopNamesTest, ANameThatStandsThereIsNotWrittenAgain) {
  EXPECT_TRUE(names_.setName(1, "Mail"));
  EXPECT_FALSE(names_.setName(1, "Mail"));
  EXPECT_EQ(names_.ownName(1), "two") << "the second time, too";
}

TEST_F(DesktopNamesTest, ANameThatAnEarlierRunHasWrittenIsNotTheWindowManagers) {
  EXPECT_FALSE(names_.setName(1, "two"));
  EXPECT_EQ(names_.ownName(1), "");
  EXPECT_TRUE(names_.clearName(1, "Desktop 2"));
  EXPECT_EQ(names_.all()[1], "Desktop 2");
}

TEST_F(DesktopNamesTest, OneThatChangesAloneIsTheUsersRenaming) {
  EXPECT_EQ(names_.take({"one", "Web", "three"}, Steady), renamed(1));
  EXPECT_EQ(names_.take({"one", "Web", "three"}, Steady), kNothing);
  EXPECT_EQ(names_.take({"one", "Web", ""}, Steady), renamed(2));
}

TEST_F(DesktopNamesTest, ARenamingOfANameThatWasSetIsTheUsersToo) {
  EXPECT_TRUE(names_.setName(1, "Mail"));
  EXPECT_EQ(names_.take({"one", "Post", "three"}, Steady), renamed(1));
  EXPECT_EQ(names_.ownName(1), "two");
}

TEST_F(DesktopNamesTest, SeveralThatChangeAreTheWindowManagersOwn) {
  EXPECT_EQ(names_.take({"eins", "zwei", "three"}, Steady), kOwnNames);
  EXPECT_EQ(names_.ownName(0), "eins");
}

TEST_F(DesktopNamesTest, MoreOrFewerNamesAreTheWindowManagersOwn) {
  EXPECT_EQ(names_.take({"one", "two", "three", "four"}, Steady), kOwnNames);
  EXPECT_EQ(names_.take({"one"}, Steady), kOwnNames);
  EXPECT_EQ(names_.take({}, Steady), kOwnNames);
}

TEST_F(DesktopNamesTest, WhatAWindowManagerThatComesNamesIsItsOwn) {
  EXPECT_TRUE(names_.setName(1, "Mail"));
  EXPECT_EQ(names_.take({"one", "two", "three"}, Settling), kOwnNames);
  EXPECT_EQ(names_.ownName(1), "two");
  EXPECT_FALSE(names_.keepsItsNames());
  EXPECT_TRUE(names_.setName(1, "Mail"));
}

TEST_F(DesktopNamesTest, AWindowManagerThatPutsItsNameBackIsLeftAlone) {
  EXPECT_TRUE(names_.setName(1, "Mail"));
  EXPECT_EQ(names_.take({"one", "two", "three"}, Steady), kOwnNames);
  EXPECT_TRUE(names_.keepsItsNames());
  EXPECT_FALSE(names_.setName(1, "Mail"));
  EXPECT_FALSE(names_.clearName(1, "Desktop 2"));
  EXPECT_EQ(names_.all()[1], "two");
  names_.setWindowManager(false);
  EXPECT_TRUE(names_.setName(1, "Mail")) << "another may take names";
}

TEST_F(DesktopNamesTest, AWindowManagerThatKeepsItsNamesIsWrittenNone) {
  names_.setWindowManager(true);
  EXPECT_FALSE(names_.setName(1, "Mail"));
  EXPECT_EQ(names_.take({"one", "2", "three"}, Steady), kOwnNames);
}

TEST(DesktopNameOwnersTest, AreKnownByTheirNames) {
  EXPECT_TRUE(ownsDesktopNames("i3"));
  EXPECT_TRUE(ownsDesktopNames("bspwm"));
  EXPECT_TRUE(ownsDesktopNames("herbstluftwm"));
  EXPECT_FALSE(ownsDesktopNames("Openbox"));
  EXPECT_FALSE(ownsDesktopNames(""));
}

}  // namespace
}  // namespace vembrix
