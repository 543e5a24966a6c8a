#include "platform/WindowServer.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "platform/NotificationCenter.h"
#include "platform/SignWindow.h"
#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::Contains;
using testing::SizeIs;

class WindowServerConformance : public testing::Test {
 protected:
  using SpaceID = WindowServer::SpaceID;

  PropertyList answer() { return server_.CGSCopyManagedDisplaySpaces(connection_); }
  SpaceID active() { return server_.CGSGetActiveSpace(connection_); }

  /// The Spaces' dictionaries, over all displays.
  std::vector<PropertyList> spaces() {
    const PropertyList displays = answer();
    std::vector<PropertyList> all;
    if (!displays.asArray()) return all;
    for (const PropertyList& display : *displays.asArray()) {
      const auto* spaces = display["Spaces"].asArray();
      if (spaces) all.insert(all.end(), spaces->begin(), spaces->end());
    }
    return all;
  }

  std::vector<SpaceID> ids() {
    std::vector<SpaceID> ids;
    for (const PropertyList& space : spaces()) {
      ids.push_back(static_cast<SpaceID>(space["ManagedSpaceID"].integer().value_or(-1)));
    }
    return ids;
  }

  std::string display() { return *(*answer().asArray())[0]["Display Identifier"].asString(); }

  static constexpr std::uint32_t kWindowOptions =
      WindowServer::onScreenOnly | WindowServer::excludeDesktopElements;

  PropertyList windows() { return server_.CGWindowListCopyWindowInfo(kWindowOptions); }

  /// The descriptions of the owner's windows, front to back.
  std::vector<PropertyList> windowsOf(std::string_view owner) {
    std::vector<PropertyList> found;
    const PropertyList all = windows();
    if (!all.asArrayOfDictionaries()) return found;
    for (const PropertyList& window : *all.asArrayOfDictionaries()) {
      const std::string* name = window["kCGWindowOwnerName"].asString();
      if (name && *name == owner) found.push_back(window);
    }
    return found;
  }
  bool runUntilWindowsOf(std::string_view owner, std::size_t count) {
    return system_.runUntil([&] { return windowsOf(owner).size() == count; }, kPatience);
  }

  bool runUntilActive(SpaceID space) {
    return system_.runUntil([&] { return active() == space; }, kPatience);
  }
  bool runUntilCount(std::size_t count) {
    return system_.runUntil(
        [&] { return answer().asArray() != nullptr && spaces().size() == count; }, kPatience);
  }

  SystemUnderTest& system_ = SystemUnderTest::shared();
  WindowServer& server_ = WindowServer::shared();
  WindowServer::ConnectionID connection_ = server_.CGSMainConnectionID();
  int changes_ = 0;
  Observation observation_ = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [this] { changes_ += 1; });
};

TEST_F(WindowServerConformance, HasOneConnectionForTheProcess) {
  EXPECT_EQ(server_.CGSMainConnectionID(), connection_);
  EXPECT_NE(connection_, 0);
}

TEST_F(WindowServerConformance, AnswersOneDictionaryForEachDisplay) {
  const PropertyList displays = answer();
  ASSERT_NE(displays.asArray(), nullptr);
  ASSERT_THAT(*displays.asArray(), SizeIs(1));
  const PropertyList& display = (*displays.asArray())[0];
  ASSERT_NE(display.asDictionary(), nullptr);
  ASSERT_NE(display["Display Identifier"].asString(), nullptr);
  EXPECT_EQ(*display["Display Identifier"].asString(), "Main");
  ASSERT_NE(display["Spaces"].asArray(), nullptr);
  EXPECT_THAT(*display["Spaces"].asArray(), SizeIs(4));
}

TEST_F(WindowServerConformance, TellsOfEachSpaceItsIdUuidAndType) {
  std::set<std::string> uuids;
  std::set<std::int64_t> numbers;
  for (const PropertyList& space : spaces()) {
    ASSERT_NE(space["ManagedSpaceID"].asInteger(), nullptr);
    ASSERT_NE(space["uuid"].asString(), nullptr);
    const std::int64_t id = *space["ManagedSpaceID"].asInteger();
    EXPECT_GT(id, 0);
    EXPECT_EQ(space["id64"], space["ManagedSpaceID"]);
    EXPECT_EQ(space["type"], PropertyList(0));
    EXPECT_FALSE(space["uuid"].asString()->empty());
    uuids.insert(*space["uuid"].asString());
    numbers.insert(id);
  }
  EXPECT_THAT(uuids, SizeIs(4));
  EXPECT_THAT(numbers, SizeIs(4));
}

TEST_F(WindowServerConformance, TheActiveSpaceIsAListedOne) {
  EXPECT_EQ(active(), ids()[0]);
}

TEST_F(WindowServerConformance, AnswersOfAnUnchangedDesktopShareTheirContents) {
  const PropertyList first = answer();
  system_.goToSpace(ids()[1]);
  EXPECT_TRUE(runUntilActive(ids()[1]));
  EXPECT_EQ(answer().asArray(), first.asArray());
}

TEST_F(WindowServerConformance, AGoingOfTheUsersIsAnnouncedOnceWhenItHolds) {
  std::vector<SpaceID> seen;
  const auto observation = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [&] { seen.push_back(active()); });
  const SpaceID target = ids()[2];
  system_.goToSpace(target);
  EXPECT_TRUE(runUntilActive(target));
  system_.runFor(milliseconds(100));
  EXPECT_THAT(seen, testing::ElementsAre(target));
}

TEST_F(WindowServerConformance, GoesToASpaceWhenTold) {
  for (const std::size_t index : {3U, 0U, 1U}) {
    const SpaceID target = ids()[index];
    changes_ = 0;
    server_.CGSManagedDisplaySetCurrentSpace(connection_, display(), target);
    EXPECT_TRUE(runUntilActive(target));
    system_.runFor(milliseconds(50));
    EXPECT_EQ(changes_, 1);
  }
}

TEST_F(WindowServerConformance, GoingToTheActiveSpaceIsNoChange) {
  const SpaceID before = active();
  server_.CGSManagedDisplaySetCurrentSpace(connection_, display(), before);
  system_.runFor(milliseconds(100));
  EXPECT_EQ(active(), before);
  EXPECT_EQ(changes_, 0);
}

TEST_F(WindowServerConformance, AnUnknownSpaceOrDisplayIsIgnored) {
  const SpaceID before = active();
  for (const SpaceID unknown : {SpaceID{0}, SpaceID{999}, ~SpaceID{0}, (SpaceID{1} << 32) + 2}) {
    server_.CGSManagedDisplaySetCurrentSpace(connection_, display(), unknown);
  }
  server_.CGSManagedDisplaySetCurrentSpace(connection_, "No such display", ids()[1]);
  server_.CGSManagedDisplaySetCurrentSpace(connection_, "", ids()[1]);
  system_.runFor(milliseconds(100));
  EXPECT_EQ(active(), before);
  EXPECT_EQ(changes_, 0);
}

TEST_F(WindowServerConformance, SpacesMayBeAddedAndKeepTheirNames) {
  const std::vector<PropertyList> before = spaces();
  system_.setSpaceCount(6);
  EXPECT_TRUE(runUntilCount(6));
  EXPECT_GE(changes_, 1);
  const std::vector<PropertyList> after = spaces();
  EXPECT_TRUE(std::equal(before.begin(), before.end(), after.begin()));
  EXPECT_EQ(active(), ids()[0]);
}

TEST_F(WindowServerConformance, TheActiveSpaceMayBeTakenAway) {
  system_.goToSpace(ids()[3]);
  EXPECT_TRUE(runUntilActive(ids()[3]));
  system_.setSpaceCount(2);
  EXPECT_TRUE(runUntilCount(2));
  EXPECT_TRUE(
      system_.runUntil([&] { return std::ranges::count(ids(), active()) == 1; }, kPatience));
}

TEST_F(WindowServerConformance, ThereMayBeOneSpace) {
  system_.setSpaceCount(1);
  EXPECT_TRUE(runUntilCount(1));
  EXPECT_EQ(active(), ids()[0]);
}

TEST_F(WindowServerConformance, ThereMayBeNoSpaceForAMoment) {
  system_.setSpaceCount(0);
  EXPECT_TRUE(runUntilCount(0));
  EXPECT_EQ(active(), 0U);
  system_.setSpaceCount(3);
  EXPECT_TRUE(runUntilCount(3));
  EXPECT_TRUE(system_.runUntil([&] { return active() != 0; }, kPatience));
  EXPECT_THAT(ids(), Contains(active()));
}

TEST_F(WindowServerConformance, ThereMayBeHundredsOfSpaces) {
  system_.setSpaceCount(300);
  EXPECT_TRUE(runUntilCount(300));
  const SpaceID last = ids().back();
  system_.goToSpace(last);
  EXPECT_TRUE(runUntilActive(last));
  server_.CGSManagedDisplaySetCurrentSpace(connection_, display(), ids()[150]);
  EXPECT_TRUE(runUntilActive(ids()[150]));
}

TEST_F(WindowServerConformance, ListsWindowsWithOwnerAndBounds) {
  EXPECT_THAT(windowsOf("Editor"), SizeIs(0));
  system_.showWindow("Editor", {1000, 600});
  ASSERT_TRUE(runUntilWindowsOf("Editor", 1));
  const PropertyList bounds = windowsOf("Editor")[0]["kCGWindowBounds"];
  EXPECT_EQ(bounds["Width"].number(), 1000);
  EXPECT_EQ(bounds["Height"].number(), 600);
  EXPECT_EQ(bounds["X"].number(), 0);
  EXPECT_EQ(bounds["Y"].number(), 0);
}

TEST_F(WindowServerConformance, ListsWindowsFrontToBack) {
  windows();
  system_.showWindow("Editor", {1000, 600});
  system_.showWindow("Browser", {900, 500});
  ASSERT_TRUE(runUntilWindowsOf("Browser", 1));
  ASSERT_TRUE(runUntilWindowsOf("Editor", 1));
  const PropertyList all = windows();
  const auto& list = *all.asArray();
  const auto place = [&](const char* owner) {
    return std::ranges::find_if(list, [&](const PropertyList& window) {
      return window["kCGWindowOwnerName"] == PropertyList(owner);
    });
  };
  EXPECT_LT(place("Browser"), place("Editor"));
}

TEST_F(WindowServerConformance, AWindowOfTheDocksOverTheScreenIsThere) {
  system_.showWindow(system_.dockName(), {1440, 900});
  ASSERT_TRUE(runUntilWindowsOf("Dock", 1));
  EXPECT_EQ(windowsOf("Dock")[0]["kCGWindowBounds"]["Width"].number(), 1440);
}

// Windows in Spaces

class WindowServerSpacesConformance : public WindowServerConformance {
 protected:
  PropertyList spacesOf(WindowServer::WindowNumber window) {
    return server_.CGSCopySpacesForWindows(connection_, WindowServer::allSpaces,
                                           std::array{window});
  }
  std::set<SpaceID> spaceIDsOf(WindowServer::WindowNumber window) {
    std::set<SpaceID> found;
    const PropertyList spaces = spacesOf(window);
    if (!spaces.asArray()) return found;
    for (const PropertyList& space : *spaces.asArray()) {
      found.insert(static_cast<SpaceID>(space.integer().value_or(-1)));
    }
    return found;
  }
  void add(SpaceID space) {
    server_.CGSAddWindowsToSpaces(connection_, std::array{number_}, std::array{space});
  }
  void remove(SpaceID space) {
    server_.CGSRemoveWindowsFromSpaces(connection_, std::array{number_}, std::array{space});
  }

  std::unique_ptr<SignWindow> window_ = SignWindow::create({.frame = {100, 100, 300, 120}});
  WindowServer::WindowNumber number_ = window_->windowNumber();
};

TEST_F(WindowServerSpacesConformance, AWindowIsBornInTheActiveSpace) {
  system_.goToSpace(ids()[1]);
  ASSERT_TRUE(runUntilActive(ids()[1]));
  EXPECT_TRUE(spaceIDsOf(number_).empty()) << "not born yet";
  window_->orderFront();
  EXPECT_EQ(spaceIDsOf(number_), std::set{ids()[1]});
  system_.runFor(milliseconds(200));
  EXPECT_EQ(spaceIDsOf(number_), std::set{ids()[1]});
}

TEST_F(WindowServerSpacesConformance, AddedAndRemovedItIsInTheOtherSpace) {
  window_->orderFront();
  add(ids()[2]);
  remove(ids()[0]);
  EXPECT_EQ(spaceIDsOf(number_), std::set{ids()[2]});
  system_.runFor(milliseconds(200));
  EXPECT_EQ(spaceIDsOf(number_), std::set{ids()[2]});
}

TEST_F(WindowServerSpacesConformance, MovesWhenItHasLongBeenShown) {
  window_->orderFront();
  system_.runFor(milliseconds(200));
  add(ids()[3]);
  remove(ids()[0]);
  EXPECT_EQ(spaceIDsOf(number_), std::set{ids()[3]});
  system_.runFor(milliseconds(200));
  EXPECT_EQ(spaceIDsOf(number_), std::set{ids()[3]});
}

TEST_F(WindowServerSpacesConformance, StaysWhenTheUserGoesElsewhere) {
  window_->orderFront();
  system_.runFor(milliseconds(100));
  system_.goToSpace(ids()[2]);
  ASSERT_TRUE(runUntilActive(ids()[2]));
  EXPECT_EQ(spaceIDsOf(number_), std::set{ids()[0]});
}

TEST_F(WindowServerSpacesConformance, UnknownWindowsAndSpacesAreIgnored) {
  window_->orderFront();
  add(999);
  server_.CGSAddWindowsToSpaces(connection_, std::array{number_ + 77}, std::array{ids()[1]});
  EXPECT_EQ(spaceIDsOf(number_), std::set{ids()[0]});
  EXPECT_TRUE(spaceIDsOf(number_ + 77).empty());
}

}  // namespace
}  // namespace vembrix
