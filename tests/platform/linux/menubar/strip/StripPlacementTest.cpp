#include "platform/linux/menubar/strip/StripPlacement.h"

#include <gmock/gmock.h>

#include <ostream>

#include "platform/linux/menubar/strip/PanelAreas.h"

namespace vembrix {

// For messages of failed tests; found by the namespace of the type.
// GoogleTest's name for it. NOLINTNEXTLINE(readability-identifier-naming)
void PrintTo(const StripPlace& place, std::ostream* out) {
  *out << "monitor " << place.monitor << (place.edge == StripPlace::Edge::Top ? " top" : " bottom")
       << (place.side == StripPlace::Side::Left ? " left " : " right ") << place.offset
       << (place.isOnPanel ? " on panel" : "");
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Edge = StripPlace::Edge;
using Side = StripPlace::Side;

constexpr QRect kScreen{0, 0, 1440, 900};
constexpr QRect kTopPanel{0, 0, 1440, 27};
constexpr QSize kStrip{80, 24};

StripSurroundings with(std::vector<QRect> panels) {
  return {{kScreen}, std::move(panels)};
}

QRect defaultPlace(const StripSurroundings& surroundings, const QSize& size = kStrip) {
  return stripPosition(surroundings, size, std::nullopt).geometry;
}

// Without a place of the user's

TEST(StripPlacementTest, StandsAtTheTopRight) {
  EXPECT_EQ(defaultPlace(with({})), QRect(1360, 0, 80, 24));
}

TEST(StripPlacementTest, StandsBelowAPanelAlongTheWholeEdge) {
  EXPECT_EQ(defaultPlace(with({kTopPanel})), QRect(1360, 27, 80, 24));
}

TEST(StripPlacementTest, StandsBelowTwoPanelsOneBelowTheOther) {
  EXPECT_EQ(defaultPlace(with({QRect(0, 27, 1440, 20), kTopPanel})), QRect(1360, 47, 80, 24));
}

TEST(StripPlacementTest, StandsLeftOfAPanelInTheCorner) {
  EXPECT_EQ(defaultPlace(with({QRect(1240, 0, 200, 27)})), QRect(1160, 0, 80, 24));
}

TEST(StripPlacementTest, StandsLeftOfAPanelAtTheRightEdge) {
  EXPECT_EQ(defaultPlace(with({QRect(1400, 0, 40, 900)})), QRect(1320, 0, 80, 24));
}

TEST(StripPlacementTest, PanelsElsewhereDoNotMatter) {
  EXPECT_EQ(defaultPlace(with({QRect(0, 876, 1440, 24), QRect(0, 0, 60, 900)})),
            QRect(1360, 0, 80, 24));
}

TEST(StripPlacementTest, WhereNothingIsFreeItStandsInTheCorner) {
  EXPECT_EQ(defaultPlace(with({kScreen})), QRect(1360, 0, 80, 24));
}

TEST(StripPlacementTest, IsNoWiderThanItsMonitor) {
  EXPECT_EQ(defaultPlace(with({kTopPanel}), {2000, 24}), QRect(0, 27, 1440, 24));
}

TEST(StripPlacementTest, StandsOnThePrimaryMonitor) {
  const StripSurroundings two{{{1920, 100, 1440, 900}, {0, 0, 1920, 1080}},
                              {{1920, 100, 1440, 30}, {0, 0, 1920, 50}}};
  EXPECT_EQ(defaultPlace(two), QRect(3280, 130, 80, 24));
}

TEST(StripPlacementTest, WithoutMonitorsItIsSomewhere) {
  EXPECT_EQ(defaultPlace({}).size(), kStrip);
}

// Where the user has put it

TEST(StripPlacementTest, StandsWhereTheUserHasPutIt) {
  const StripPosition left =
      stripPosition(with({}), kStrip, StripPlace{.side = Side::Left, .offset = 100});
  EXPECT_EQ(left.geometry, QRect(100, 0, 80, 24));
  const StripPosition right = stripPosition(with({}), kStrip, StripPlace{.offset = 100});
  EXPECT_EQ(right.geometry, QRect(1260, 0, 80, 24));
  EXPECT_FALSE(right.isOnPanel);
}

TEST(StripPlacementTest, KeepsItsEndInPlaceWhenItsTitleGrows) {
  const auto rightEnd = [](int width) {
    return stripPosition(with({}), {width, 24}, StripPlace{.offset = 100}).geometry.right();
  };
  EXPECT_EQ(rightEnd(80), rightEnd(300));
}

TEST(StripPlacementTest, StandsAtTheBottomIfPutThere) {
  const StripPlace place{.edge = Edge::Bottom, .offset = 10};
  EXPECT_EQ(stripPosition(with({}), kStrip, place).geometry, QRect(1350, 876, 80, 24));
  const QRect panel(0, 870, 1440, 30);
  EXPECT_EQ(stripPosition(with({panel}), kStrip, place).geometry, QRect(1350, 846, 80, 24));
}

TEST(StripPlacementTest, StandsInTheMiddleOfAPanelsHeight) {
  const StripPlace place{.side = Side::Left, .offset = 500, .isOnPanel = true};
  const StripPosition position = stripPosition(with({{0, 0, 1440, 48}}), kStrip, place);
  EXPECT_EQ(position.geometry, QRect(500, 12, 80, 24));
  EXPECT_TRUE(position.isOnPanel);
}

TEST(StripPlacementTest, IsAsFlatAsThePanelThatCarriesIt) {
  const StripPlace place{.side = Side::Left, .offset = 500, .isOnPanel = true};
  EXPECT_EQ(stripPosition(with({{0, 0, 1440, 20}}), kStrip, place).geometry, QRect(500, 0, 80, 20));
}

TEST(StripPlacementTest, WhenItsPanelGoesItStandsAtTheEdge) {
  const StripPlace place{.side = Side::Left, .offset = 500, .isOnPanel = true};
  const StripPosition position = stripPosition(with({}), kStrip, place);
  EXPECT_EQ(position.geometry, QRect(500, 0, 80, 24));
  EXPECT_FALSE(position.isOnPanel) << "so that it keeps its place free";
}

TEST(StripPlacementTest, APanelBecomesTooShortForIt) {
  const StripPlace place{.side = Side::Left, .offset = 500, .isOnPanel = true};
  EXPECT_EQ(stripPosition(with({{0, 0, 400, 30}}), kStrip, place).geometry, QRect(500, 0, 80, 24));
}

TEST(StripPlacementTest, APlaceOutsideOfTheMonitorIsAtItsEnd) {
  EXPECT_EQ(stripPosition(with({}), kStrip, StripPlace{.offset = 30000}).geometry,
            QRect(0, 0, 80, 24));
  EXPECT_EQ(stripPosition(with({}), kStrip, StripPlace{.offset = -5}).geometry,
            QRect(1360, 0, 80, 24));
}

TEST(StripPlacementTest, APlaceOnAMonitorThatIsGoneIsNone) {
  EXPECT_EQ(stripPosition(with({}), kStrip, StripPlace{.monitor = 1}).geometry,
            QRect(1360, 0, 80, 24));
}

// Dragging

TEST(StripPlacementTest, LetGoAnywhereItGoesToTheNearestEdge) {
  EXPECT_EQ(placeOfDrop(with({}), {300, 200, 80, 24}),
            (StripPlace{.side = Side::Left, .offset = 300}));
  EXPECT_EQ(placeOfDrop(with({}), {1000, 700, 80, 24}),
            (StripPlace{.edge = Edge::Bottom, .offset = 360}));
}

TEST(StripPlacementTest, LetGoOnAPanelItStaysThere) {
  EXPECT_EQ(placeOfDrop(with({kTopPanel}), {800, 5, 80, 24}),
            (StripPlace{.offset = 560, .isOnPanel = true}));
  EXPECT_EQ(
      placeOfDrop(with({{0, 870, 1440, 30}}), {100, 872, 80, 24}),
      (StripPlace{.edge = Edge::Bottom, .side = Side::Left, .offset = 100, .isOnPanel = true}));
}

TEST(StripPlacementTest, APanelThatStandsUprightCarriesNothing) {
  const auto place = placeOfDrop(with({{0, 0, 60, 900}}), {0, 300, 80, 24});
  EXPECT_EQ(place, (StripPlace{.side = Side::Left, .offset = 0}));
}

TEST(StripPlacementTest, TheTopRightCornerBringsTheDefaultBack) {
  EXPECT_EQ(placeOfDrop(with({}), {1360, 0, 80, 24}), std::nullopt);
  EXPECT_EQ(placeOfDrop(with({}), {1345, 6, 80, 24}), std::nullopt) << "about there";
  EXPECT_EQ(placeOfDrop(with({}), {1400, -10, 80, 24}), std::nullopt) << "beyond it";
  EXPECT_EQ(placeOfDrop(with({kTopPanel}), {1360, 1, 80, 24}), std::nullopt) << "on a panel";
}

TEST(StripPlacementTest, WhereItStandsByDefaultIsTheDefaultToo) {
  const StripSurroundings corner = with({{1240, 0, 200, 27}});
  EXPECT_EQ(placeOfDrop(corner, {1155, 3, 80, 24}), std::nullopt);
  EXPECT_NE(placeOfDrop(corner, {1000, 3, 80, 24}), std::nullopt);
}

TEST(StripPlacementTest, GoesToAnotherMonitor) {
  const StripSurroundings two{{kScreen, {1440, 0, 1024, 768}}, {}};
  EXPECT_EQ(placeOfDrop(two, {2380, 0, 80, 24}), (StripPlace{.monitor = 1, .offset = 4}));
  EXPECT_EQ(stripPosition(two, kStrip, StripPlace{.monitor = 1, .offset = 4}).geometry,
            QRect(2380, 0, 80, 24));
}

TEST(StripPlacementTest, WhatIsLetGoSomewhereStandsThere) {
  for (const QRect& dropped :
       {QRect(100, 3, 80, 24), QRect(700, 30, 80, 24), QRect(1200, 890, 80, 24)}) {
    const auto place = placeOfDrop(with({kTopPanel}), dropped);
    const QRect strip = stripPosition(with({kTopPanel}), kStrip, place).geometry;
    EXPECT_EQ(strip.left(), dropped.left());
    EXPECT_EQ(placeOfDrop(with({kTopPanel}), strip), place) << "and a click moves it nowhere";
  }
}

// What it keeps free

Strut strut(const QRect& strip, Edge edge, const std::vector<QRect>& monitors) {
  return strutOf({strip, edge, false}, monitors);
}

TEST(StripPlacementTest, KeepsItsPlaceFreeFromTheEdgeOn) {
  EXPECT_THAT(strut({1360, 27, 80, 24}, Edge::Top, {kScreen}),
              ElementsAre(0, 0, 51, 0, 0, 0, 0, 0, 1360, 1439, 0, 0));
  EXPECT_THAT(strut({100, 876, 80, 24}, Edge::Bottom, {kScreen}),
              ElementsAre(0, 0, 0, 24, 0, 0, 0, 0, 0, 0, 100, 179));
}

TEST(StripPlacementTest, KeepsNothingFreeOnAPanel) {
  EXPECT_EQ(strutOf({{500, 0, 80, 24}, Edge::Top, true}, {kScreen}), Strut{});
}

TEST(StripPlacementTest, TakesNothingFromAMonitorAboveOrBelow) {
  const std::vector<QRect> stacked = {{0, 1080, 1440, 900}, {0, 0, 1920, 1080}};
  EXPECT_EQ(strut({1360, 1080, 80, 24}, Edge::Top, stacked), Strut{});
  EXPECT_EQ(strut({100, 1056, 80, 24}, Edge::Bottom, stacked), Strut{});
  EXPECT_NE(strut({1500, 1056, 80, 24}, Edge::Bottom, stacked), Strut{}) << "none is below";
}

// What panels take

DockFacts dock(const QRect& geometry, std::optional<Strut> strut = {}) {
  return {.geometry = geometry, .isMapped = true, .strut = strut};
}

TEST(PanelAreasTest, APanelTakesWhatItKeepsFree) {
  const Strut strut{0, 0, 40, 0, 0, 0, 0, 0, 0, 1439, 0, 0};
  EXPECT_THAT(panelAreas(dock({0, 5, 1440, 30}, strut), {kScreen}),
              ElementsAre(QRect(0, 0, 1440, 40)));
}

TEST(PanelAreasTest, APanelThatSaysNoPartTakesItsOwn) {
  const Strut strut{0, 0, 24, 0};
  EXPECT_THAT(panelAreas(dock({200, 0, 600, 24}, strut), {kScreen}),
              ElementsAre(QRect(200, 0, 600, 24)));
}

TEST(PanelAreasTest, APanelThatKeepsNothingFreeTakesWhereItStands) {
  EXPECT_THAT(panelAreas(dock({567, 851, 306, 49}), {kScreen}),
              ElementsAre(QRect(567, 851, 306, 49)));
}

TEST(PanelAreasTest, APanelThatIsHiddenTakesNothing) {
  EXPECT_THAT(panelAreas(dock({-9999, -9999, 3, 3}), {kScreen}), IsEmpty());
  EXPECT_THAT(panelAreas(dock({0, 0, 1440, 3}), {kScreen}), IsEmpty()) << "and waits";
  DockFacts unmapped = dock(kTopPanel, Strut{0, 0, 27, 0});
  unmapped.isMapped = false;
  EXPECT_THAT(panelAreas(unmapped, {kScreen}), IsEmpty());
}

TEST(PanelAreasTest, APanelTakesNothingFromOtherMonitors) {
  const std::vector<QRect> stacked = {{0, 0, 1440, 900}, {0, 900, 1440, 900}};
  const Strut strut{0, 0, 930, 0, 0, 0, 0, 0, 0, 1439, 0, 0};
  EXPECT_THAT(panelAreas(dock({0, 900, 1440, 30}, strut), stacked),
              ElementsAre(QRect(0, 900, 1440, 30)));
}

TEST(PanelAreasTest, SenselessNumbersHarmNobody) {
  Strut strut;
  strut.fill(0xFFFFFFFF);
  for (const QRect& area : panelAreas(dock(kTopPanel, strut), {kScreen})) {
    EXPECT_TRUE(kScreen.contains(area));
  }
  EXPECT_THAT(panelAreas(dock(kTopPanel), {}), IsEmpty());
}

// The window manager's own panels

QMargins own(const QMargins& before, int workAreaTop, int docks, int strip) {
  const QRect workArea = kScreen.adjusted(0, workAreaTop, 0, 0);
  return windowManagerPanels(before, workArea, kScreen, {0, docks, 0, 0}, {0, strip, 0, 0});
}

TEST(PanelAreasTest, WhatNobodyExplainsIsTheWindowManagers) {
  EXPECT_EQ(own({}, 22, 0, 0), QMargins(0, 22, 0, 0));
  EXPECT_EQ(own({}, 22, 22, 0), QMargins()) << "a panel does";
  EXPECT_EQ(own({}, 24, 0, 24), QMargins()) << "the strip does";
}

TEST(PanelAreasTest, WhatHidesBehindTheStripIsAsItWas) {
  EXPECT_EQ(own({0, 22, 0, 0}, 46, 0, 46), QMargins(0, 22, 0, 0));
}

TEST(PanelAreasTest, TheWindowManagersPanelGrowsAndGoes) {
  EXPECT_EQ(own({0, 22, 0, 0}, 60, 0, 46), QMargins(0, 60, 0, 0));
  EXPECT_EQ(own({0, 22, 0, 0}, 0, 0, 0), QMargins());
}

TEST(PanelAreasTest, AWorkAreaOutsideOfTheScreenSaysNothing) {
  EXPECT_EQ(windowManagerPanels({}, {0, 0, 5000, 5000}, kScreen, {}, {}), QMargins());
  EXPECT_EQ(windowManagerPanels({}, {0, 0, 0, 0}, kScreen, {}, {}), QMargins());
}

TEST(PanelAreasTest, AThicknessIsAnAreaAtTheEdge) {
  EXPECT_THAT(edgeAreas({0, 22, 0, 30}, kScreen),
              ElementsAre(QRect(0, 0, 1440, 22), QRect(0, 870, 1440, 30)));
}

TEST(StripPlacementTest, ANarrowerStripIsServedByWhatIsKeptFree) {
  const Strut kept{0, 0, 24, 0, 0, 0, 0, 0, 1300, 1439, 0, 0};
  EXPECT_TRUE(servesAs(kept, kept));
  EXPECT_TRUE(servesAs({0, 0, 24, 0, 0, 0, 0, 0, 1360, 1439, 0, 0}, kept));
  EXPECT_FALSE(servesAs({0, 0, 24, 0, 0, 0, 0, 0, 1299, 1439, 0, 0}, kept)) << "wider";
  EXPECT_FALSE(servesAs({0, 0, 24, 0, 0, 0, 0, 0, 1300, 1440, 0, 0}, kept)) << "elsewhere";
  EXPECT_FALSE(servesAs({0, 0, 30, 0, 0, 0, 0, 0, 1300, 1439, 0, 0}, kept)) << "thicker";
  EXPECT_FALSE(servesAs({0, 0, 0, 24, 0, 0, 0, 0, 0, 0, 1300, 1439}, kept)) << "another edge";
  EXPECT_FALSE(servesAs({}, kept)) << "nothing any more";
  EXPECT_TRUE(servesAs({}, {}));
  EXPECT_FALSE(servesAs({0, 0, 24, 0, 0, 0, 0, 0, 1360, 1439, 0, 0},
                        {0, 0, 24, 0, 0, 0, 0, 0, 0, 1439, 0, 0}))
      << "much more than is wanted";
}

}  // namespace
}  // namespace vembrix
