#include "menubar/MenuBarController.h"

#include <gmock/gmock.h>

#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/faces/RecordingDropdownMenu.h"
#include "platform/embedded/faces/RecordingStatusItem.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

constexpr Srgb kPink{1.0, 0.71, 0.76};
constexpr Srgb kBlue{0.69, 0.83, 1.0};

class MenuBarControllerTest : public testing::Test {
 protected:
  /// Returns the status item of a controller that the first call creates.
  RecordingStatusItem& item() {
    if (!controller_) {
      SpaceManager::shared().reload();
      controller_ = MenuBarController::create();
    }
    return *RecordingStatusItem::current();
  }

  const StatusItemContent& content() { return item().content(); }

  std::optional<Appearance> menuAppearance() {
    return dynamic_cast<RecordingDropdownMenu&>(*item().menu()).appearance();
  }

  void goTo(std::size_t place) {
    desktop_.activate(desktop_.spaceAt(place));
    SpaceManager::shared().reload();
  }

  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
  PreferencesStore& store_ = PreferencesStore::shared();
  std::shared_ptr<MenuBarController> controller_;
};

TEST_F(MenuBarControllerTest, ShowsTheNameBetweenBlanksInBlackOnARoundedPastelFill) {
  EXPECT_EQ(item().title(), " Desktop 1 ");
  EXPECT_EQ(item().textColor(), Color(kBlack));
  EXPECT_EQ(content().fill, Color(kPink));
  EXPECT_EQ(content().cornerRadius, 3.0);
  EXPECT_EQ(content().length, StatusItemLength::variable());
}

TEST_F(MenuBarControllerTest, TextIsBlackOnEveryPastelColor) {
  desktop_.setSpaceCount(16);
  for (std::size_t place = 0; place < 16; ++place) {
    goTo(place);
    EXPECT_EQ(item().textColor(), Color(kBlack)) << place;
  }
}

TEST_F(MenuBarControllerTest, FollowsTheActiveSpace) {
  item();
  goTo(1);
  EXPECT_EQ(item().title(), " Desktop 2 ");
  EXPECT_EQ(content().fill, Color(kBlue));
}

TEST_F(MenuBarControllerTest, FollowsARename) {
  item();
  SpaceManager::shared().setName("Work 🛠", SpaceManager::shared().spaces()[0]);
  EXPECT_EQ(item().title(), " Work 🛠 ");
}

TEST_F(MenuBarControllerTest, FollowsTheListOfSpaces) {
  goTo(3);
  EXPECT_EQ(item().title(), " Desktop 4 ");
  desktop_.removeSpace(desktop_.spaceAt(0));
  SpaceManager::shared().reload();
  EXPECT_EQ(item().title(), " Desktop 3 ");
}

TEST_F(MenuBarControllerTest, FollowsTheSettings) {
  item();
  const std::string uuid = SpaceManager::shared().spaces()[0].uuid;
  store_.setSpaceColors({{uuid, {{1, 0, 0, 1}, {0, 0, 0.5, 1}}}});
  EXPECT_EQ(content().fill, Color(Srgb{0, 0, 0.5}));
  EXPECT_EQ(item().textColor(), Color(kWhite));
}

TEST_F(MenuBarControllerTest, FollowsTheSystemsAppearance) {
  store_.setColorMode(ColorMode::ColorForeground);
  store_.setSpaceColors({{"embedded-space-1", {{0, 0, 0, 1}, {1, 1, 1, 1}}}});
  EXPECT_EQ(item().textColor(), Color(kBlack));
  desktop_.setAppearance(Appearance::Dark);
  EXPECT_EQ(item().textColor(), Color(Srgb{0.2, 0.2, 0.2}));
  desktop_.setAppearance(Appearance::Light);
  EXPECT_EQ(item().textColor(), Color(kBlack));
}

TEST_F(MenuBarControllerTest, ForegroundModeHasNoFillAndALegibleText) {
  store_.setColorMode(ColorMode::ColorForeground);
  store_.setSpaceColors({{"embedded-space-1", {{0.1, 0.1, 0.1, 1}, {1, 1, 1, 1}}}});
  desktop_.setAppearance(Appearance::Dark);
  EXPECT_EQ(content().fill, std::nullopt);
  const Srgb text = item().textColor()->srgb().value();
  EXPECT_DOUBLE_EQ(text.red, 0.35);
  EXPECT_DOUBLE_EQ(text.green, 0.35);
  EXPECT_DOUBLE_EQ(text.blue, 0.35);
  EXPECT_EQ(item().title(), " Desktop 1 ");
}

TEST_F(MenuBarControllerTest, TheThemesDarknessDoesNotDecideAboutTheText) {
  store_.setThemeName("Coral");
  store_.setColorMode(ColorMode::ColorForeground);
  store_.setSpaceColors({{"embedded-space-1", {{0, 0, 0, 1}, {1, 1, 1, 1}}}});
  EXPECT_EQ(item().textColor(), Color(kBlack));
}

TEST_F(MenuBarControllerTest, NamesOffShowsASquareTemplateIconWhateverTheWidthMode) {
  store_.setMenuBarWidthMode(MenuBarWidthMode::MaxTitleLength);
  store_.setShowSpaceNameInMenuBar(false);
  const auto* icon = std::get_if<TemplateImage>(&content().label);
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(icon->size, (Size{16, 16}));
  EXPECT_EQ(content().fill, std::nullopt);
  EXPECT_EQ(content().length, StatusItemLength::square());
}

TEST_F(MenuBarControllerTest, TheIconIsFourRoundedSquaresInBottomUpCoordinates) {
  const TemplateImage& icon = makeIconImage();
  ASSERT_EQ(icon.shapes.size(), 4U);
  const std::vector<Point> corners = {{0, 8.75}, {8.75, 8.75}, {0, 0}, {8.75, 0}};
  for (std::size_t i = 0; i < corners.size(); ++i) {
    EXPECT_EQ(icon.shapes[i].rect, (Rect{corners[i].x, corners[i].y, 7.25, 7.25})) << i;
    EXPECT_EQ(icon.shapes[i].radius, 2.0) << i;
  }
}

TEST_F(MenuBarControllerTest, NamesOnAgainBringsTheNameBack) {
  item();
  store_.setShowSpaceNameInMenuBar(false);
  store_.setShowSpaceNameInMenuBar(true);
  EXPECT_EQ(item().title(), " Desktop 1 ");
  EXPECT_EQ(content().fill, Color(kPink));
  EXPECT_EQ(content().length, StatusItemLength::variable());
}

TEST_F(MenuBarControllerTest, AVeryLongNameLeavesAFixedItem140PointsWide) {
  item();
  const std::string name(500, 'W');
  SpaceManager::shared().setName(name, SpaceManager::shared().spaces()[0]);
  store_.setMenuBarWidthMode(MenuBarWidthMode::MaxTitleLength);
  EXPECT_EQ(content().length, StatusItemLength::fixed(140.0));
  EXPECT_EQ(item().title(), " " + name + " ");
  store_.setMenuBarWidthMode(MenuBarWidthMode::FitToTitle);
  EXPECT_EQ(content().length, StatusItemLength::variable());
}

TEST_F(MenuBarControllerTest, AnUnknownActiveSpaceShowsPlainDesktopsWithoutFill) {
  item();
  desktop_.overrideActiveSpace(999);
  SpaceManager::shared().reload();
  EXPECT_EQ(content().label,
            decltype(StatusItemContent::label)(StatusItemContent::PlainTitle{"Desktops"}));
  EXPECT_EQ(content().fill, std::nullopt);
  EXPECT_EQ(content().length, StatusItemLength::variable());
}

TEST_F(MenuBarControllerTest, WithoutSpacesTheWidthModeStillCounts) {
  desktop_.setSpaceCount(0);
  store_.setMenuBarWidthMode(MenuBarWidthMode::MaxTitleLength);
  EXPECT_EQ(item().title(), "Desktops");
  EXPECT_EQ(content().length, StatusItemLength::fixed(140.0));
}

TEST_F(MenuBarControllerTest, AFullScreenSpaceShowsDesktopOnTheFirstPastelColor) {
  const auto full = desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  desktop_.activate(full);
  EXPECT_EQ(item().title(), " Desktop ");
  EXPECT_EQ(content().fill, Color(kPink));
}

TEST_F(MenuBarControllerTest, WithoutAButtonOnlyTheWidthModeCounts) {
  RecordingStatusItem::giveButton(false);
  store_.setShowSpaceNameInMenuBar(false);
  store_.setMenuBarWidthMode(MenuBarWidthMode::MaxTitleLength);
  EXPECT_EQ(content().length, StatusItemLength::fixed(140.0));
  EXPECT_EQ(item().title(), "");
}

TEST_F(MenuBarControllerTest, TheMenusAppearanceIsTheThemes) {
  EXPECT_EQ(menuAppearance(), Appearance::Light) << "Alpine is the theme at first";
  store_.setThemeName("Coral");
  EXPECT_EQ(menuAppearance(), Appearance::Dark);
  store_.setThemeName("Frost");
  EXPECT_EQ(menuAppearance(), std::nullopt);
}

TEST_F(MenuBarControllerTest, ARefreshWithoutAChangeChangesNothing) {
  const int changes = item().changeCount();
  controller_->refreshTitle();
  EXPECT_EQ(item().changeCount(), changes);
}

TEST_F(MenuBarControllerTest, NothingIsRefreshedAfterTheControllerIsGone) {
  item();
  controller_.reset();
  EXPECT_EQ(RecordingStatusItem::current(), nullptr);
  goTo(1);
  store_.setThemeName("Coral");
  desktop_.setAppearance(Appearance::Dark);
}

}  // namespace
}  // namespace vembrix
