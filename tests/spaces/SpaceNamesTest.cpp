#include <gmock/gmock.h>

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "spaces/SpaceManager.h"
#include "spaces/Whitespace.h"
#include "support/Posts.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using Dictionary = PropertyList::Dictionary;

class SpaceNamesTest : public testing::Test {
 protected:
  /// Returns the model, which the first call creates with the names stored by then.
  static SpaceManager& manager() { return SpaceManager::shared(); }

  static SpaceInfo space(std::size_t place) {
    if (manager().spaces().empty()) manager().reload();
    return manager().spaces().at(place);
  }

  EmbeddedDesktop& desktop_ = EmbeddedDesktop::shared();
  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
};

TEST_F(SpaceNamesTest, RenamingStoresTheNameWithoutTheBlanksAroundIt) {
  const SpaceInfo first = space(0);
  manager().setName("  Work  ", first);
  EXPECT_EQ(manager().displayName(first), "Work");
  EXPECT_EQ(defaults_.object("SpaceNames"), PropertyList(Dictionary{{first.uuid, "Work"}}));
}

TEST_F(SpaceNamesTest, RenamingToBlanksRemovesTheName) {
  const SpaceInfo second = space(1);
  manager().setName("Work", second);
  manager().setName("   ", second);
  EXPECT_EQ(manager().displayName(second), "Desktop 2");
  EXPECT_EQ(defaults_.object("SpaceNames"), PropertyList(Dictionary{}));
}

TEST_F(SpaceNamesTest, RenamingAnnouncesAChange) {
  const SpaceInfo first = space(0);
  Posts posts;
  manager().setName("Work", first);
  manager().setName("", first);
  EXPECT_THAT(posts.names(), ElementsAre(SpaceManager::didChange, SpaceManager::didChange));
}

TEST_F(SpaceNamesTest, AnEmptyStoredNameIsNoName) {
  defaults_.set("SpaceNames", Dictionary{{"embedded-space-1", ""}});
  EXPECT_EQ(manager().displayName(space(0)), "Desktop 1");
}

TEST_F(SpaceNamesTest, StoredNamesAreShown) {
  defaults_.set("SpaceNames", Dictionary{{"embedded-space-2", "Mail"}});
  EXPECT_EQ(manager().displayName(space(0)), "Desktop 1");
  EXPECT_EQ(manager().displayName(space(1)), "Mail");
}

TEST_F(SpaceNamesTest, OneNameOfAnotherTypeSpoilsTheStoredNames) {
  defaults_.set("SpaceNames", Dictionary{{"embedded-space-1", 7}, {"embedded-space-2", "Mail"}});
  EXPECT_EQ(manager().displayName(space(1)), "Desktop 2");
}

TEST_F(SpaceNamesTest, StoredNamesOfAnotherTypeAreNone) {
  defaults_.set("SpaceNames", PropertyList::Array{"Mail"});
  EXPECT_EQ(manager().displayName(space(1)), "Desktop 2");
}

TEST_F(SpaceNamesTest, NumbersStartAgainOnEveryDisplay) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 1920, 1080}});
  const auto id = desktop_.addSpace("Second");
  desktop_.setSpaceCount(3);
  manager().reload();
  const SpaceInfo& last = manager().spaces().back();
  ASSERT_EQ(last.spaceID, id);
  EXPECT_EQ(manager().displayName(last), "Desktop 2");
}

TEST_F(SpaceNamesTest, FullScreenSpacesAreNotCounted) {
  const auto fullScreen = desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  desktop_.moveSpace(fullScreen, 0);
  EXPECT_EQ(manager().displayName(space(1)), "Desktop 1");
}

TEST_F(SpaceNamesTest, AnUnnamedFullScreenSpaceIsADesktopWithoutNumber) {
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  EXPECT_EQ(manager().displayName(space(4)), "Desktop");
}

TEST_F(SpaceNamesTest, AFullScreenSpaceMayHaveAName) {
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  const SpaceInfo full = space(4);
  manager().setName("Film", full);
  EXPECT_EQ(manager().displayName(full), "Film");
}

TEST_F(SpaceNamesTest, AStaleRecordIsADesktopWithoutNumber) {
  const SpaceInfo last = space(3);
  desktop_.setSpaceCount(2);
  manager().reload();
  EXPECT_EQ(manager().displayName(last), "Desktop");
  SpaceInfo altered = space(0);
  altered.spaceID += 100;
  EXPECT_EQ(manager().displayName(altered), "Desktop");
}

TEST_F(SpaceNamesTest, NamesOfVanishedSpacesStayAndComeBackWithThem) {
  const SpaceInfo fourth = space(3);
  manager().setName("Music", fourth);
  desktop_.setSpaceCount(3);
  manager().reload();
  EXPECT_EQ(defaults_.object("SpaceNames")[fourth.uuid], PropertyList("Music"));
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::Desktop, fourth.uuid);
  manager().reload();
  EXPECT_EQ(manager().displayName(manager().spaces().back()), "Music");
}

TEST_F(SpaceNamesTest, NamesOfAllScriptsAreKept) {
  for (const char* name :
       {"עבודה", "العمل", "作業", "Work 🛠", "e\u0301tude", "👩‍👩‍👧"}) {
    manager().setName(name, space(0));
    EXPECT_EQ(manager().displayName(space(0)), name);
  }
}

TEST_F(SpaceNamesTest, TheDesktopIsToldTheUsersNames) {
  const SpaceInfo first = space(0);
  manager().setName("Work", first);
  EXPECT_EQ(desktop_.publishedName(first.spaceID), "Work");
  manager().setName("", first);
  EXPECT_EQ(desktop_.publishedName(first.spaceID), "Desktop 1");
}

TEST_F(SpaceNamesTest, StoredNamesAreToldWhenTheListIsLoaded) {
  defaults_.set("SpaceNames", Dictionary{{"embedded-space-2", "Mail"}});
  manager().reload();
  EXPECT_EQ(desktop_.publishedName(desktop_.spaceAt(1)), "Mail");
  EXPECT_EQ(desktop_.publishedName(desktop_.spaceAt(0)), "");
  manager().reload();
  EXPECT_EQ(desktop_.publishCount(), 1);
}

// Desktops that name their Spaces themselves.

TEST_F(SpaceNamesTest, AnUnnamedSpaceShowsTheDesktopsOwnName) {
  const SpaceInfo second = space(1);
  desktop_.setOwnName(second.spaceID, " web ");
  EXPECT_EQ(manager().displayName(second), "web");
  manager().setName("Mail", second);
  EXPECT_EQ(manager().displayName(second), "Mail");
  EXPECT_EQ(desktop_.publishedName(second.spaceID), "Mail");
  manager().setName("", second);
  EXPECT_EQ(manager().displayName(second), "web");
  EXPECT_EQ(desktop_.publishedName(second.spaceID), " web ");
}

TEST_F(SpaceNamesTest, AnOwnNameThatIsOnlyAWordAndItsNumberIsNone) {
  const SpaceInfo third = space(2);
  for (const char* name : {"3", "Desktop 3", "Workspace 3", "desktop3", "Arbeitsfläche 3", " 3 ",
                           "03", "Desktop 003"}) {
    desktop_.setOwnName(third.spaceID, name);
    EXPECT_EQ(manager().displayName(third), "Desktop 3") << name;
  }
}

TEST_F(SpaceNamesTest, AnOwnNameThatSaysMoreIsShown) {
  const SpaceInfo third = space(2);
  for (const char* name :
       {"4", "Desktop 4", "Desktop 13", "33", "3: web", "my desk 3", "web", "1 3"}) {
    desktop_.setOwnName(third.spaceID, name);
    EXPECT_EQ(manager().displayName(third), name);
  }
}

TEST_F(SpaceNamesTest, OwnNamesThatChangeAnnounceAChangeAndTheUsersAreToldAgain) {
  const SpaceInfo first = space(0);
  manager().setName("Work", first);
  Posts posts;
  desktop_.setOwnName(first.spaceID, "one");
  EXPECT_THAT(posts.names(), ElementsAre(SpaceManager::didChange));
  EXPECT_EQ(manager().displayName(first), "Work");
  EXPECT_EQ(desktop_.publishedName(first.spaceID), "Work");
}

TEST_F(SpaceNamesTest, ASpaceThatTheUserRenamesElsewhereHasThatName) {
  const SpaceInfo second = space(1);
  Posts posts;
  desktop_.renameElsewhere(second.spaceID, " Mail ");
  EXPECT_EQ(manager().displayName(second), "Mail");
  EXPECT_EQ(defaults_.object("SpaceNames"), PropertyList(Dictionary{{second.uuid, "Mail"}}));
  EXPECT_THAT(posts.names(), ElementsAre(SpaceManager::didChange));
}

TEST_F(SpaceNamesTest, ANameThatIsTakenAwayElsewhereIsGone) {
  const SpaceInfo second = space(1);
  for (const char* none : {"", "  ", "Desktop 2", "2"}) {
    manager().setName("Mail", second);
    desktop_.renameElsewhere(second.spaceID, none);
    EXPECT_EQ(manager().displayName(second), "Desktop 2") << none;
    EXPECT_EQ(defaults_.object("SpaceNames"), PropertyList(Dictionary{})) << none;
  }
}

TEST_F(SpaceNamesTest, ANameFromElsewhereForAnUnknownSpaceIsIgnored) {
  space(0);
  Posts posts;
  desktop_.renameElsewhere(12345, "Mail");
  EXPECT_THAT(posts.names(), testing::IsEmpty());
}

TEST(WhitespaceTest, TrimsWhiteSpaceAndLineEndsOfAllScripts) {
  EXPECT_EQ(trimWhitespace(" \t\r\n\v\f Work \n"), "Work");
  EXPECT_EQ(trimWhitespace("\u00A0\u2003\u3000Work\u2028\u2029\u0085\u202F"), "Work");
  EXPECT_EQ(trimWhitespace("\u200BWork\u200B"), "Work");
}

TEST(WhitespaceTest, KeepsWhatIsInside) {
  EXPECT_EQ(trimWhitespace("two  words\u00A0here"), "two  words\u00A0here");
}

TEST(WhitespaceTest, BlankTextIsEmpty) {
  EXPECT_EQ(trimWhitespace(""), "");
  EXPECT_EQ(trimWhitespace(" \u2003\n"), "");
}

TEST(WhitespaceTest, BytesThatAreNoUtf8AreKept) {
  EXPECT_EQ(trimWhitespace(" \x85\xA0 "), "\x85\xA0");
  EXPECT_EQ(trimWhitespace("\x80 \xE2\x80"), "\x80 \xE2\x80");
}

}  // namespace
}  // namespace vembrix
