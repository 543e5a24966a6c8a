#include "platform/linux/x11/X11DesktopTest.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/support/TestSession.h"
#include "platform/linux/x11/DesktopNames.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using Property = X11Client::Property;

// Values that any client may write

TEST_F(X11DesktopTest, AMalformedNumberOfDesktopsIsNone) {
  const std::vector<Property> malformed = {
      {"CARDINAL", 8, "4"},
      {"CARDINAL", 8, std::string("\4\0\0\0", 4)},
      {"CARDINAL", 16, std::string("\4\0", 2)},
      {"CARDINAL", 32, ""},
      {"STRING", 8, "four"},
      {"WINDOW", 32, cardinals({4})},
      {"UTF8_STRING", 8, std::string(100000, 'x')},
  };
  for (const Property& property : malformed) {
    setRoot("_NET_NUMBER_OF_DESKTOPS", property);
    EXPECT_TRUE(runUntilCount(std::nullopt)) << property.type << property.format;
    EXPECT_EQ(desktop_->activeSpace(), 0U);
    setRoot("_NET_NUMBER_OF_DESKTOPS", {"CARDINAL", 32, cardinals({4})});
    EXPECT_TRUE(runUntilCount(4));
  }
  client().deleteProperty(client().root(), "_NET_NUMBER_OF_DESKTOPS");
  EXPECT_TRUE(runUntilCount(std::nullopt));
}

TEST_F(X11DesktopTest, AMalformedCurrentDesktopIsUnknown) {
  const std::vector<Property> malformed = {
      {"CARDINAL", 8, "1"},
      {"CARDINAL", 32, ""},
      {"ATOM", 32, cardinals({1})},
      {"CARDINAL", 32, cardinals({4})},
      {"CARDINAL", 32, cardinals({0xFFFFFFFF})},
  };
  for (const Property& property : malformed) {
    setRoot("_NET_CURRENT_DESKTOP", property);
    EXPECT_TRUE(runUntilActive(0)) << property.type << property.format;
    EXPECT_EQ(count(), 4U);
    setRoot("_NET_CURRENT_DESKTOP", {"CARDINAL", 32, cardinals({1})});
    EXPECT_TRUE(runUntilActive(2));
  }
}

TEST_F(X11DesktopTest, AnAbsurdNumberOfDesktopsIsCutOff) {
  setRoot("_NET_NUMBER_OF_DESKTOPS", {"CARDINAL", 32, cardinals({4000000000})});
  EXPECT_TRUE(runUntilCount(X11Desktop::kMaxDesktops));
  EXPECT_EQ(desktop_->activeSpace(), 1U);
}

TEST_F(X11DesktopTest, AFloodOfChangesEndsInTheLastOne) {
  for (std::uint32_t i = 0; i < 2000; ++i) {
    setRoot("_NET_NUMBER_OF_DESKTOPS", {"CARDINAL", 32, cardinals({i % 7 + 1})});
  }
  setRoot("_NET_NUMBER_OF_DESKTOPS", {"CARDINAL", 32, cardinals({9})});
  EXPECT_TRUE(runUntilCount(9));
}

// Names

TEST_F(X11DesktopTest, WritesAName) {
  desktop_->setName(2, "Büro \xF0\x9F\x8F\xA0");
  ASSERT_TRUE(runUntilShown(1, "Büro \xF0\x9F\x8F\xA0"));
  EXPECT_EQ(client().property(client().root(), "_NET_DESKTOP_NAMES")->type, "UTF8_STRING");
}

/// The window manager sleeps, because it completes names that are missing and could do so over a
/// name that was just written.
class DesktopNamesPropertyTest : public X11DesktopTest {
 protected:
  DesktopNamesPropertyTest() { display_.stopWindowManager(); }

  /// Waits until the desktop under test has read `wanted` as the first desktop's name.
  bool runUntilRead(std::string_view wanted) {
    return runUntil([&] { return desktop_->ownName(1) == wanted; });
  }
};

TEST_F(DesktopNamesPropertyTest, KeepsTheOtherNames) {
  setRoot("_NET_DESKTOP_NAMES", {"UTF8_STRING", 8, std::string("a\0b\0c\0d\0e\0", 10)});
  ASSERT_TRUE(runUntilRead("a"));
  desktop_->setName(2, "two");
  desktop_->setName(4, "four");
  ASSERT_TRUE(runUntilShown(3, "four"));
  EXPECT_THAT(client().desktopNames(), ElementsAre("a", "two", "c", "four", "e"));
}

TEST_F(DesktopNamesPropertyTest, FillsUpMissingNames) {
  client().deleteProperty(client().root(), "_NET_DESKTOP_NAMES");
  ASSERT_TRUE(runUntilRead(""));
  desktop_->setName(3, "three");
  ASSERT_TRUE(runUntilShown(2, "three"));
  EXPECT_THAT(client().desktopNames(), ElementsAre("", "", "three"));
}

TEST_F(DesktopNamesPropertyTest, TakesNamesThatAreNotEndedAndMalformedOnes) {
  setRoot("_NET_DESKTOP_NAMES", {"UTF8_STRING", 8, std::string("a\0b", 3)});
  ASSERT_TRUE(runUntilRead("a"));
  desktop_->setName(1, "one");
  ASSERT_TRUE(runUntilShown(0, "one"));
  EXPECT_EQ(shownName(1), "b");
  setRoot("_NET_DESKTOP_NAMES", {"CARDINAL", 32, cardinals({1, 2, 3})});
  ASSERT_TRUE(runUntilRead(""));
  desktop_->setName(1, "uno");
  EXPECT_TRUE(runUntilShown(0, "uno"));
}

TEST_F(DesktopNamesPropertyTest, ANameThatItHasCostsNothing) {
  // Another write would be visible: it would terminate the name with NUL.
  setRoot("_NET_DESKTOP_NAMES", {"UTF8_STRING", 8, "one"});
  ASSERT_TRUE(runUntilRead("one"));
  desktop_->setName(1, "one");
  runFor(milliseconds(50));
  EXPECT_EQ(client().property(client().root(), "_NET_DESKTOP_NAMES")->bytes, "one");
}

TEST_F(X11DesktopTest, TheNameOfAnUnknownSpaceIsIgnored) {
  const auto before = client().desktopNames();
  desktop_->setName(0, "none");
  desktop_->setName(5, "fifth");
  desktop_->setName(~std::uint64_t{0}, "last");
  runFor(milliseconds(50));
  EXPECT_EQ(client().desktopNames(), before);
}

TEST_F(X11DesktopTest, ANameEndsAtANul) {
  desktop_->setName(1, std::string_view("one\0two", 7));
  ASSERT_TRUE(runUntilShown(0, "one"));
  EXPECT_NE(shownName(1), "two");
}

}  // namespace
}  // namespace vembrix
