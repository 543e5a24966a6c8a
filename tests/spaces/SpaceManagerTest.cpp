#include "spaces/SpaceManager.h"

#include <gmock/gmock.h>

#include <set>

#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "spaces/SpaceObserver.h"
#include "support/AllocationCounter.h"
#include "support/Posts.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

class SpaceManagerTest : public testing::Test {
 protected:
  /// Returns the Spaces that the manager reads from that answer of the window server.
  const std::vector<SpaceInfo>& spacesFor(PropertyList answer) {
    desktop_.overrideManagedDisplaySpaces(std::move(answer));
    manager_.reload();
    return manager_.spaces();
  }

  static PropertyList oneDisplay(Array spaces) {
    return Array{Dictionary{{"Display Identifier", "D1"}, {"Spaces", std::move(spaces)}}};
  }

  std::set<std::string> knownUUIDs() {
    std::set<std::string> uuids;
    const PropertyList stored = defaults_.object("KnownSpaceUUIDs");
    EXPECT_NE(stored.asArray(), nullptr);
    for (const PropertyList& uuid : *stored.asArray()) {
      EXPECT_TRUE(uuids.insert(*uuid.asString()).second);
    }
    return uuids;
  }

  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
  SpaceManager& manager_ = SpaceManager::shared();
};

TEST_F(SpaceManagerTest, IsEmptyBeforeTheFirstReload) {
  EXPECT_THAT(manager_.spaces(), IsEmpty());
  EXPECT_EQ(manager_.activeSpaceID(), 0U);
  EXPECT_EQ(manager_.activeSpace(), nullptr);
}

TEST_F(SpaceManagerTest, NotificationsAndKeysGoByTheirNames) {
  EXPECT_EQ(SpaceManager::didChange, "SpaceManagerDidChange");
  EXPECT_EQ(SpaceManager::activeChanged, "SpaceManagerActiveSpaceChanged");
  EXPECT_EQ(SpaceManager::tourWillStart, "SpaceManagerTourWillStart");
  EXPECT_EQ(SpaceManager::tourDidEnd, "SpaceManagerTourDidEnd");
  manager_.reload();
  manager_.setName("Work", manager_.spaces().front());
  EXPECT_NE(defaults_.object("SpaceNames").asDictionary(), nullptr);
  EXPECT_NE(defaults_.object("KnownSpaceUUIDs").asArray(), nullptr);
}

TEST_F(SpaceManagerTest, ListsTheDisplaysOneAfterTheOtherInTheirOrder) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 1920, 1080}});
  const auto fullScreen = desktop_.addSpace("Second", EmbeddedDesktop::SpaceType::FullScreen);
  desktop_.moveSpace(desktop_.spaceAt(3), 0);
  manager_.reload();

  std::vector<std::uint64_t> ids;
  for (const SpaceInfo& space : manager_.spaces()) ids.push_back(space.spaceID);
  EXPECT_EQ(ids, desktop_.spaceIDs());
  ASSERT_EQ(ids.size(), 6U);
  EXPECT_EQ(manager_.spaces()[0].displayUUID, "Main");
  EXPECT_EQ(manager_.spaces()[5].displayUUID, "Second");
  EXPECT_EQ(manager_.spaces()[5].spaceID, fullScreen);
  EXPECT_EQ(manager_.spaces()[5].type, 4);
}

TEST_F(SpaceManagerTest, ADisplayWithoutIdentifierIsMain) {
  const auto& spaces = spacesFor(Array{Dictionary{
      {"Spaces", Array{Dictionary{{"ManagedSpaceID", 5}, {"uuid", "u"}, {"type", 0}}}}}});
  EXPECT_THAT(spaces, ElementsAre(SpaceInfo{5, "u", "Main", 0}));
}

TEST_F(SpaceManagerTest, ADisplayIdentifierOfAnotherTypeIsMain) {
  const auto& spaces = spacesFor(Array{
      Dictionary{{"Display Identifier", 7}, {"Spaces", Array{Dictionary{{"ManagedSpaceID", 5}}}}}});
  EXPECT_THAT(spaces, ElementsAre(SpaceInfo{5, "space-5", "Main", 0}));
}

TEST_F(SpaceManagerTest, ASpaceWithId64OnlyIsListedUnderItAndOneWithNeitherIsAbsent) {
  const auto& spaces = spacesFor(oneDisplay(
      {Dictionary{{"id64", 9}, {"uuid", "nine"}}, Dictionary{{"uuid", "none"}, {"type", 0}},
       Dictionary{{"ManagedSpaceID", "text"}, {"id64", 10}, {"uuid", "ten"}},
       Dictionary{{"ManagedSpaceID", "text"}, {"uuid", "neither"}}}));
  EXPECT_THAT(spaces, ElementsAre(SpaceInfo{9, "nine", "D1", 0}, SpaceInfo{10, "ten", "D1", 0}));
}

TEST_F(SpaceManagerTest, TheManagedIdWinsOverId64) {
  const auto& spaces =
      spacesFor(oneDisplay({Dictionary{{"ManagedSpaceID", 3}, {"id64", 4}, {"uuid", "u"}}}));
  EXPECT_THAT(spaces, ElementsAre(SpaceInfo{3, "u", "D1", 0}));
}

TEST_F(SpaceManagerTest, ASpaceWithoutUuidAndId42IsNamedByItsId) {
  const auto& spaces = spacesFor(oneDisplay({Dictionary{{"ManagedSpaceID", 42}}}));
  ASSERT_THAT(spaces, ElementsAre(SpaceInfo{42, "space-42", "D1", 0}));
  manager_.setName("Answer", spaces[0]);
  EXPECT_EQ(defaults_.object("SpaceNames")["space-42"], PropertyList("Answer"));
}

TEST_F(SpaceManagerTest, ASpaceWithAnEmptyUuidKeepsIt) {
  const auto& spaces = spacesFor(oneDisplay({Dictionary{{"ManagedSpaceID", 1}, {"uuid", ""}}}));
  EXPECT_THAT(spaces, ElementsAre(SpaceInfo{1, "", "D1", 0}));
}

TEST_F(SpaceManagerTest, OfSeveralEmptyUuidsOnlyTheFirstStaysSoThatNoTwoSpacesShareAName) {
  const Array first{Dictionary{{"ManagedSpaceID", 1}, {"uuid", ""}},
                    Dictionary{{"ManagedSpaceID", 2}, {"uuid", "two"}}};
  const Array second{Dictionary{{"ManagedSpaceID", 7}, {"uuid", ""}}};
  const PropertyList answer = Array{Dictionary{{"Display Identifier", "D1"}, {"Spaces", first}},
                                    Dictionary{{"Display Identifier", "D2"}, {"Spaces", second}}};
  for (int reloads = 0; reloads < 2; ++reloads) {
    const auto& spaces = spacesFor(answer);
    ASSERT_EQ(spaces.size(), 3U);
    EXPECT_EQ(spaces[0].uuid, "");
    EXPECT_EQ(spaces[1].uuid, "two");
    EXPECT_EQ(spaces[2].uuid, "space-7");
  }
}

TEST_F(SpaceManagerTest, ASpaceWithAnEmptyUuidIsNamedLikeAnyOther) {
  const auto& spaces = spacesFor(oneDisplay({Dictionary{{"ManagedSpaceID", 1}, {"uuid", ""}},
                                             Dictionary{{"ManagedSpaceID", 2}, {"uuid", "two"}}}));
  manager_.setName("Mail", spaces[0]);
  EXPECT_EQ(manager_.displayName(spaces[0]), "Mail");
  EXPECT_EQ(manager_.displayName(spaces[1]), "Desktop 2");
}

TEST_F(SpaceManagerTest, ATypeOfAnotherTypeIsAnOrdinaryDesktop) {
  const auto& spaces =
      spacesFor(oneDisplay({Dictionary{{"ManagedSpaceID", 1}, {"uuid", "u"}, {"type", "4"}}}));
  EXPECT_THAT(spaces, ElementsAre(SpaceInfo{1, "u", "D1", 0}));
}

TEST_F(SpaceManagerTest, AnAnswerThatIsNoArrayOfDictionariesIsAnEmptyList) {
  manager_.reload();
  ASSERT_EQ(manager_.spaces().size(), 4U);
  Posts posts;
  EXPECT_THAT(spacesFor(PropertyList()), IsEmpty());
  EXPECT_THAT(posts.names(), ElementsAre(SpaceManager::didChange));
  for (const PropertyList& answer :
       {PropertyList("text"), PropertyList(Dictionary{}), PropertyList(Array{}),
        PropertyList(Array{Dictionary{{"Spaces", Array{Dictionary{{"id64", 1}}}}}, 7})}) {
    EXPECT_THAT(spacesFor(answer), IsEmpty());
  }
  EXPECT_EQ(posts.names().size(), 1U) << "an empty list that stays empty is no change";
}

TEST_F(SpaceManagerTest, SpacesThatAreNoArrayOfDictionariesAreNone) {
  EXPECT_THAT(spacesFor(Array{Dictionary{{"Spaces", "text"}}, Dictionary{},
                              Dictionary{{"Spaces", Array{Dictionary{{"id64", 1}}, "text"}}},
                              Dictionary{{"Spaces", Array{Dictionary{{"id64", 2}}}}}}),
              ElementsAre(SpaceInfo{2, "space-2", "Main", 0}));
}

TEST_F(SpaceManagerTest, ANegativeIdEndsTheProgram) {
  EXPECT_DEATH(spacesFor(oneDisplay({Dictionary{{"ManagedSpaceID", -1}}})), "negative Space id");
}

TEST_F(SpaceManagerTest, TheIdZeroIsListedLikeAnyOther) {
  const auto& spaces = spacesFor(oneDisplay({Dictionary{{"ManagedSpaceID", 0}, {"uuid", "u"}}}));
  EXPECT_THAT(spaces, ElementsAre(SpaceInfo{0, "u", "D1", 0}));
}

TEST_F(SpaceManagerTest, ReloadingAnUnchangedSystemPostsNothingButStillRewritesTheKnownUUIDs) {
  manager_.reload();
  Posts posts;
  const int writes = defaults_.writeCount();
  defaults_.set("KnownSpaceUUIDs", Array{"elsewhere"});
  manager_.reload();
  EXPECT_THAT(posts.names(), IsEmpty());
  EXPECT_EQ(defaults_.writeCount(), writes + 2);
  EXPECT_EQ(knownUUIDs(),
            (std::set<std::string>{"elsewhere", "embedded-space-1", "embedded-space-2",
                                   "embedded-space-3", "embedded-space-4"}));
}

TEST_F(SpaceManagerTest, TheKnownUUIDsAreWrittenAtEveryReloadThoughNothingChanged) {
  manager_.reload();
  const int writes = defaults_.writeCount();
  manager_.reload();
  EXPECT_EQ(defaults_.writeCount(), writes + 1);
  manager_.reload();
  EXPECT_EQ(defaults_.writeCount(), writes + 2);
}

TEST_F(SpaceManagerTest, KnownUUIDsOutliveTheirSpaces) {
  manager_.reload();
  desktop_.removeSpace(desktop_.spaceAt(3));
  manager_.reload();
  EXPECT_EQ(knownUUIDs().count("embedded-space-4"), 1U);
}

TEST_F(SpaceManagerTest, KnownUUIDsOfAnotherTypeCountAsNone) {
  for (const PropertyList& stored :
       {PropertyList("text"), PropertyList(Array{"kept?", 7}), PropertyList(Dictionary{})}) {
    defaults_.set("KnownSpaceUUIDs", stored);
    manager_.reload();
    EXPECT_EQ(knownUUIDs().size(), 4U);
  }
}

TEST_F(SpaceManagerTest, WithoutSpacesTheKnownUUIDsAreAnEmptyArray) {
  desktop_.setSpaceCount(0);
  manager_.reload();
  EXPECT_EQ(defaults_.object("KnownSpaceUUIDs"), PropertyList(Array{}));
}

TEST_F(SpaceManagerTest, AFullScreenSpaceIsListedButNeverKnown) {
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen, "full");
  manager_.reload();
  EXPECT_EQ(manager_.spaces().back().uuid, "full");
  EXPECT_EQ(knownUUIDs().count("full"), 0U);
}

TEST_F(SpaceManagerTest, SwitchingSpacesOnlyChangesTheActiveId) {
  manager_.reload();
  SpaceObserver observer;
  const Observation observation = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [&] { observer.activeSpaceDidChange(); });
  Posts posts;
  desktop_.activate(desktop_.spaceAt(2));
  EXPECT_THAT(posts.names(), ElementsAre(SpaceManager::activeChanged));
  EXPECT_EQ(manager_.activeSpaceID(), desktop_.spaceAt(2));
  EXPECT_EQ(manager_.activeSpace()->uuid, "embedded-space-3");
}

TEST_F(SpaceManagerTest, AChangeOfTheListIsPostedBeforeOneOfTheActiveSpace) {
  Posts posts;
  manager_.reload();
  EXPECT_THAT(posts.names(), ElementsAre(SpaceManager::didChange, SpaceManager::activeChanged));
}

TEST_F(SpaceManagerTest, TheModelIsNewWhenAChangeIsPosted) {
  std::vector<std::size_t> sizes;
  const Observation observation = NotificationCenter::defaultCenter().addObserver(
      SpaceManager::didChange, [&] { sizes.push_back(manager_.spaces().size()); });
  manager_.reload();
  desktop_.setSpaceCount(7);
  manager_.reload();
  desktop_.setSpaceCount(2);
  manager_.reload();
  EXPECT_THAT(sizes, ElementsAre(4U, 7U, 2U));
}

TEST_F(SpaceManagerTest, AnObserverMayReloadAgain) {
  const Observation observation = NotificationCenter::defaultCenter().addObserver(
      SpaceManager::didChange, [&] { manager_.reload(); });
  Posts posts;
  manager_.reload();
  EXPECT_EQ(manager_.spaces().size(), 4U);
  EXPECT_THAT(posts.names(), ElementsAre(SpaceManager::didChange, SpaceManager::activeChanged));
}

TEST_F(SpaceManagerTest, AReorderedListIsAChange) {
  manager_.reload();
  desktop_.moveSpace(desktop_.spaceAt(0), 3);
  Posts posts;
  manager_.reload();
  EXPECT_THAT(posts.names(), ElementsAre(SpaceManager::didChange));
}

TEST_F(SpaceManagerTest, TheFirstOfTwoSpacesWithOneIdIsTheActiveOne) {
  spacesFor(oneDisplay({Dictionary{{"ManagedSpaceID", 1}, {"uuid", "first"}},
                        Dictionary{{"ManagedSpaceID", 1}, {"uuid", "second"}}}));
  EXPECT_EQ(manager_.activeSpace()->uuid, "first");
}

TEST_F(SpaceManagerTest, TheActiveSpaceIsFoundWhereverTheListMovesIt) {
  manager_.reload();
  const auto first = desktop_.spaceAt(0);
  for (const std::size_t place : {3U, 1U, 0U}) {
    desktop_.moveSpace(first, place);
    manager_.reload();
    EXPECT_EQ(manager_.activeSpace(), &manager_.spaces().at(place));
    EXPECT_EQ(manager_.activeSpace()->spaceID, first);
  }
  desktop_.setSpaceCount(3);
  manager_.reload();
  EXPECT_EQ(manager_.activeSpace(), &manager_.spaces().at(0));
}

TEST_F(SpaceManagerTest, AnActiveSpaceThatLeavesTheListIsFoundAgainWhenItIsBack) {
  desktop_.activate(desktop_.spaceAt(3));
  manager_.reload();
  desktop_.overrideManagedDisplaySpaces(Array{});
  manager_.reload();
  EXPECT_EQ(manager_.activeSpace(), nullptr);
  desktop_.overrideManagedDisplaySpaces(std::nullopt);
  manager_.reload();
  EXPECT_EQ(manager_.activeSpace(), &manager_.spaces().at(3));
}

TEST_F(SpaceManagerTest, ObserversOfAChangeSeeTheActiveSpaceInTheNewList) {
  manager_.reload();
  const SpaceInfo* seen = nullptr;
  const Observation observation = NotificationCenter::defaultCenter().addObserver(
      SpaceManager::didChange, [&] { seen = manager_.activeSpace(); });
  desktop_.moveSpace(desktop_.spaceAt(0), 2);
  manager_.reload();
  EXPECT_EQ(seen, &manager_.spaces().at(2));
}

TEST_F(SpaceManagerTest, AnUnknownActiveIdIsKept) {
  desktop_.overrideActiveSpace(999);
  manager_.reload();
  EXPECT_EQ(manager_.activeSpaceID(), 999U);
  EXPECT_EQ(manager_.activeSpace(), nullptr);
}

TEST_F(SpaceManagerTest, HundredsOfSpacesAreListed) {
  desktop_.setSpaceCount(500);
  manager_.reload();
  EXPECT_EQ(manager_.spaces().size(), 500U);
  EXPECT_EQ(knownUUIDs().size(), 500U);
}

TEST_F(SpaceManagerTest, ReloadingAnUnchangedListAllocatesNothing) {
  desktop_.setSpaceCount(64);
  for (int i = 0; i < 3; ++i) manager_.reload();
  const std::size_t before = allocationCount();
  manager_.reload();
  EXPECT_EQ(allocationCount(), before);
}

TEST_F(SpaceManagerTest, SwitchingSpacesWithoutObserversAllocatesNothing) {
  for (int i = 0; i < 3; ++i) manager_.reload();
  desktop_.activate(desktop_.spaceAt(1));
  const std::size_t before = allocationCount();
  manager_.reload();
  EXPECT_EQ(allocationCount(), before);
  EXPECT_EQ(manager_.activeSpaceID(), desktop_.spaceAt(1));
}

TEST(SpaceInfoTest, EqualityAndHashTakeAllFourFields) {
  const SpaceInfo space{1, "u", "d", 0};
  const std::hash<SpaceInfo> hash;
  EXPECT_EQ(hash(space), hash(SpaceInfo{1, "u", "d", 0}));
  for (const SpaceInfo& other : {SpaceInfo{2, "u", "d", 0}, SpaceInfo{1, "v", "d", 0},
                                 SpaceInfo{1, "u", "e", 0}, SpaceInfo{1, "u", "d", 4}}) {
    EXPECT_NE(space, other);
    EXPECT_NE(hash(space), hash(other));
  }
}

}  // namespace
}  // namespace vembrix
