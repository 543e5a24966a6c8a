// The dropdown of the status item, from its opening to what it does to the
// desktop.

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "menubar/DropdownContent.h"
#include "menubar/MenuBarController.h"
#include "menubar/SpaceRow.h"
#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/faces/RecordingDropdownMenu.h"
#include "platform/embedded/faces/RecordingStatusItem.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "spaces/SpaceObserver.h"

namespace vembrix {
namespace {

using std::chrono::seconds;
using testing::ElementsAre;
using testing::SizeIs;
using Array = PropertyList::Array;
using SpaceType = EmbeddedDesktop::SpaceType;

constexpr Srgb kPink{1.0, 0.71, 0.76};
constexpr Srgb kBlue{0.69, 0.83, 1.0};

class DropdownTest : public testing::Test {
 protected:
  void SetUp() override {
    SpaceManager::shared().reload();
    controller_ = MenuBarController::create();
  }

  RecordingDropdownMenu& menu() {
    return static_cast<RecordingDropdownMenu&>(*RecordingStatusItem::current()->menu());
  }

  /// Closes the menu where it is open, and opens it anew.
  RecordingDropdownMenu& open() {
    menu().close();
    menu().open();
    return menu();
  }

  RecordingSpaceRowView& row(std::size_t place) { return *menu().rows().at(place); }
  /// The only oval of a row's dot.
  const DotImage::Oval& dot(std::size_t place) { return row(place).content().dot.ovals.at(0); }

  /// Renames the row of that place in the open menu.
  void rename(std::size_t place, std::string_view name) {
    row(place).hover();
    row(place).clickPencil();
    row(place).type(name);
    menu().press(RowKey::Return);
  }

  std::string strip() { return RecordingStatusItem::current()->title(); }
  static std::string uuid(std::size_t place) {
    return "embedded-space-" + std::to_string(place + 1);
  }
  PropertyList storedName(std::size_t place) { return defaults_.object("SpaceNames")[uuid(place)]; }
  /// The uuids in the order of use, the last used first; before the first opening.
  void setRecency(Array uuids) { defaults_.set("SpaceHeatRecency", std::move(uuids)); }
  std::size_t activePlace() {
    const auto ids = desktop_.spaceIDs();
    return static_cast<std::size_t>(std::ranges::find(ids, desktop_.activeSpace()) - ids.begin());
  }

  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
  PreferencesStore& store_ = PreferencesStore::shared();
  SpaceObserver observer_;
  Observation arrival_ = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [this] { observer_.activeSpaceDidChange(); });
  std::shared_ptr<MenuBarController> controller_;
};

// What it holds.

TEST_F(DropdownTest, HasARowPerDesktopThenPreferencesThenQuit) {
  EXPECT_THAT(open().titles(), ElementsAre("Desktop 1", "Desktop 2", "Desktop 3", "Desktop 4", "-",
                                           "Preferences…", "-", "Quit Vembrix"));
  EXPECT_THAT(menu().rows(), SizeIs(4));
}

TEST_F(DropdownTest, IsEmptyUntilItFirstOpens) {
  EXPECT_THAT(menu().items(), SizeIs(0));
}

TEST_F(DropdownTest, TheCommandsHaveTheUsualKeys) {
  open();
  EXPECT_EQ(menu().command("Preferences…")->keyEquivalent, ",");
  EXPECT_EQ(menu().command("Quit Vembrix")->keyEquivalent, "q");
}

TEST_F(DropdownTest, WithoutDesktopsItHoldsOnlyTheCommands) {
  desktop_.setSpaceCount(0);
  EXPECT_THAT(open().titles(), ElementsAre("-", "Preferences…", "-", "Quit Vembrix"));
}

TEST_F(DropdownTest, HoldsHundredsOfDesktops) {
  desktop_.setSpaceCount(300);
  EXPECT_THAT(open().rows(), SizeIs(300));
  EXPECT_EQ(row(299).state().label, "Desktop 300");
  EXPECT_EQ(dot(16).stroke, Color(kPink)) << "sixteen default colours in turn";
}

TEST_F(DropdownTest, FullScreenSpacesGetNoRow) {
  desktop_.addSpace("Main", SpaceType::FullScreen);
  desktop_.addSpace("Main");
  EXPECT_THAT(open().titles(), ElementsAre("Desktop 1", "Desktop 2", "Desktop 3", "Desktop 4",
                                           "Desktop 5", "-", "Preferences…", "-", "Quit Vembrix"));
}

TEST_F(DropdownTest, InAFullScreenSpaceNoRowIsTheCurrentOne) {
  desktop_.activate(desktop_.addSpace("Main", SpaceType::FullScreen));
  open();
  for (std::size_t place = 0; place < 4; ++place) {
    EXPECT_EQ(row(place).content().dotDescription, "") << place;
  }
}

TEST_F(DropdownTest, ListsTheDesktopsOfAllDisplays) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 800, 600}});
  EXPECT_THAT(open().titles(), ElementsAre("Desktop 1", "Desktop 2", "Desktop 3", "Desktop 4",
                                           "Desktop 1", "-", "Preferences…", "-", "Quit Vembrix"));
}

TEST_F(DropdownTest, ADesktopAddedWhileTheMenuWasClosedIsListedOnTheNextOpening) {
  EXPECT_THAT(open().rows(), SizeIs(4));
  menu().close();
  desktop_.addSpace("Main");
  EXPECT_THAT(open().rows(), SizeIs(5));
}

TEST_F(DropdownTest, ADesktopRemovedWhileTheMenuWasClosedIsGoneOnTheNextOpening) {
  open();
  menu().close();
  desktop_.removeSpace(desktop_.spaceAt(1));
  EXPECT_THAT(open().rows(), SizeIs(3));
}

TEST_F(DropdownTest, TheSpacesAreReadBeforeAnythingIsShown) {
  desktop_.addSpace("Main");
  desktop_.overrideActiveSpace(desktop_.spaceAt(4));
  open();
  EXPECT_EQ(row(4).content().dotDescription, "current");
  EXPECT_EQ(strip(), " Desktop 5 ");
}

TEST_F(DropdownTest, AThousandOpeningsLeaveOneSetOfRows) {
  for (int i = 0; i < 1000; ++i) {
    open();
    row(1).hover();
    row(1).clickPencil();
    row(1).type("x");
  }
  EXPECT_EQ(RecordingSpaceRowView::liveCount(), 4);
  EXPECT_EQ(queue_.pendingCount(), 0U);
  menu().close();
  EXPECT_EQ(RecordingSpaceRowView::liveCount(), 4) << "until it opens again";
  controller_.reset();
  EXPECT_EQ(RecordingSpaceRowView::liveCount(), 0);
}

// Dots and names.

TEST_F(DropdownTest, TheActiveDesktopHasADiscAndASemiboldName) {
  desktop_.activate(desktop_.spaceAt(1));
  open();
  EXPECT_EQ(dot(1).fill, Color(kBlue));
  EXPECT_EQ(dot(1).stroke, std::nullopt);
  EXPECT_EQ(row(1).content().font.weight, Font::Weight::Semibold);
  EXPECT_EQ(row(1).content().dotDescription, "current");
  EXPECT_EQ(dot(0).fill, std::nullopt);
  EXPECT_EQ(dot(0).stroke, Color(kPink));
  EXPECT_EQ(row(0).content().font.weight, Font::Weight::Regular);
}

TEST_F(DropdownTest, TheDotHasTheColorOfTheModeWithoutAnyAdjustment) {
  const Srgb black{0.01, 0.02, 0.03, 0.5};
  const Srgb white{0.99, 0.98, 0.97, 1};
  store_.setSpaceColors({{uuid(0), {CodableColor::of(black), CodableColor::of(white)}}});
  open();
  EXPECT_EQ(dot(0).fill, Color(white));
  desktop_.setAppearance(Appearance::Dark);
  store_.setColorMode(ColorMode::ColorForeground);
  open();
  EXPECT_EQ(dot(0).fill, Color(black));
}

TEST_F(DropdownTest, AColorModeOfTheWrongKindShowsTheBackground) {
  store_.setSpaceColors({{uuid(0), {{1, 0, 0, 1}, {0, 1, 0, 1}}}});
  for (const PropertyList& stored :
       {PropertyList(1), PropertyList(std::string("ColorForeground")), PropertyList(Array{})}) {
    defaults_.set("ColorMode", stored);
    open();
    EXPECT_EQ(dot(0).fill, Color(Srgb{0, 1, 0, 1}));
  }
}

TEST_F(DropdownTest, StoredColorsThatCannotBeReadShowTheDefaultOnes) {
  for (const PropertyList& stored : {PropertyList(std::string("red")), PropertyList(7),
                                     PropertyList(PropertyList::Data{0x7b})}) {
    defaults_.set("SpaceColors", stored);
    open();
    EXPECT_EQ(dot(0).fill, Color(kPink));
  }
}

TEST_F(DropdownTest, NamesOfAnyScriptAreShown) {
  const std::string rightToLeft = "שולחן العمل";
  const std::string emoji = "👩‍👩‍👧‍👦🛠";
  defaults_.set("SpaceNames", PropertyList::Dictionary{{uuid(0), rightToLeft}, {uuid(1), emoji}});
  open();
  rename(2, rightToLeft);
  rename(3, emoji);
  EXPECT_EQ(row(2).state().label, rightToLeft);
  EXPECT_EQ(row(3).state().label, emoji);
  open();
  EXPECT_EQ(row(2).state().label, rightToLeft);
  EXPECT_EQ(row(3).state().label, emoji);
}

// Heat.

TEST_F(DropdownTest, AHeatOfExactlyFiveHundredthsGlowsNotAndOfSixGlowsInTheRimsColor) {
  EXPECT_EQ(heatGlow(0.05), std::nullopt);
  EXPECT_EQ(heatGlow(0.06), Color(Srgb{1.0, 0.64, 0.24, 0.06}));
  EXPECT_EQ(heatGlow(0.0), std::nullopt);
}

TEST_F(DropdownTest, WarmDesktopsGlowAsWarmAsTheyAreAndTheCurrentOneDoesNot) {
  setRecency({uuid(0), uuid(2), uuid(1)});
  open();
  EXPECT_EQ(row(0).content().dotDescription, "current");
  EXPECT_EQ(dot(0).fill, Color(kPink)) << "a disc, not a glow";
  EXPECT_EQ(dot(2).fill, Color(Srgb{1.0, 0.64, 0.24, 1.0}));
  EXPECT_EQ(dot(1).fill, Color(Srgb{1.0, 0.64, 0.24, 0.78}));
  EXPECT_EQ(dot(3).fill, std::nullopt);
  EXPECT_EQ(row(2).content().dotDescription, "recently used");
  EXPECT_EQ(row(3).content().dotDescription, "");
}

TEST_F(DropdownTest, HeatThatIsTurnedOffGlowsNowhere) {
  setRecency({uuid(2), uuid(1)});
  store_.setHeatMapSigns(false);
  open();
  EXPECT_EQ(dot(2).fill, std::nullopt);
}

TEST_F(DropdownTest, TheMonoRimIsHalvedInALightThemeBeforeTheHeatIsItsAlpha) {
  store_.setHeatPaletteName("Mono");
  EXPECT_EQ(heatGlow(0.6), Color(Srgb{0.5, 0.5, 0.5, 0.6}));
  store_.setThemeName("Coral");
  EXPECT_EQ(heatGlow(0.6), Color(Srgb{1, 1, 1, 0.6})) << "a dark theme";
}

TEST_F(DropdownTest, AThemeWithoutADarknessOfItsOwnTakesTheSystems) {
  store_.setHeatPaletteName("Mono");
  store_.setThemeName("Frost");
  EXPECT_EQ(heatGlow(1.0), Color(Srgb{0.5, 0.5, 0.5, 1}));
  desktop_.setAppearance(Appearance::Dark);
  EXPECT_EQ(heatGlow(1.0), Color(Srgb{1, 1, 1, 1}));
  desktop_.setAppearance(std::nullopt);
  EXPECT_EQ(heatGlow(1.0), Color(Srgb{0.5, 0.5, 0.5, 1})) << "a system that does not tell";
}

TEST_F(DropdownTest, AHeatPaletteOfTheWrongKindIsTheFirst) {
  defaults_.set("HeatPaletteName", Array{});
  EXPECT_EQ(heatGlow(1.0), Color(Srgb{1.0, 0.64, 0.24, 1.0}));
}

// Themes.

TEST_F(DropdownTest, TheAppearanceIsThatOfTheThemeAtTheOpening) {
  EXPECT_EQ(open().appearance(), Appearance::Light);
  // Written by another program, and so not announced.
  defaults_.set("ThemeName", std::string("Coral"));
  EXPECT_EQ(open().appearance(), Appearance::Dark);
  defaults_.set("ThemeName", std::string("Frost"));
  EXPECT_EQ(open().appearance(), std::nullopt);
  defaults_.set("ThemeName", PropertyList(3));
  EXPECT_EQ(open().appearance(), Appearance::Light) << "none is stored that could be read";
}

TEST_F(DropdownTest, WithTheStockThemeTheCommandsKeepTheMenusFont) {
  store_.setThemeName("Stock");
  open();
  EXPECT_EQ(menu().command("Preferences…")->font, std::nullopt);
  EXPECT_EQ(menu().command("Quit Vembrix")->font, std::nullopt);
}

TEST_F(DropdownTest, WithAMonospacedThemeTheCommandsAreMonospaced) {
  store_.setThemeName("Paper");
  open();
  const Font mono{Font::Design::Monospaced, Font::Weight::Regular, {}};
  EXPECT_EQ(menu().command("Preferences…")->font, mono);
  EXPECT_EQ(menu().command("Quit Vembrix")->font, mono);
}

TEST_F(DropdownTest, WithAnyOtherThemeTheCommandsHaveTheSystemsFont) {
  const Font system{Font::Design::System, Font::Weight::Regular, {}};
  for (const AppTheme& theme : AppTheme::all()) {
    if (theme.name == "Stock" || theme.usesMonoFont) continue;
    store_.setThemeName(theme.name);
    open();
    EXPECT_EQ(menu().command("Preferences…")->font, system) << theme.name;
    EXPECT_EQ(menu().command("Quit Vembrix")->font, system) << theme.name;
  }
}

// What it does.

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
