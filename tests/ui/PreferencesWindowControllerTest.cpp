#include "ui/PreferencesWindowController.h"

#include <gmock/gmock.h>

#include <limits>

#include "support/SettingsPages.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

class PreferencesWindowControllerTest : public SettingsPages {
 protected:
  PreferencesWindowController& controller_ = PreferencesWindowController::shared();
};

TEST_F(PreferencesWindowControllerTest, TheWindowIsMadeWithContentAndNotShown) {
  EXPECT_EQ(window().contentSize(), (Size{600, 520}));
  EXPECT_EQ(window().title(), "Vembrix Preferences");
  EXPECT_FALSE(window().isShown());
  EXPECT_EQ(window().contentCount(), 1);
  EXPECT_EQ(window().tab().label, "Label");
}

TEST_F(PreferencesWindowControllerTest, ItIsOneWindowThatCanBeClosedAndShownAgain) {
  controller_.showWindow();
  const RecordingSettingsWindow* first = &window();
  window().close();
  controller_.showWindow();
  EXPECT_EQ(&window(), first);
  EXPECT_TRUE(window().isShown());
  EXPECT_EQ(window().contentCount(), 3) << "fresh content whenever it is shown";
}

TEST_F(PreferencesWindowControllerTest, StockIsThePlainTabViewInPlainChrome) {
  open("Label", "Stock");
  const PlainContent* plain = window().plain();
  ASSERT_NE(plain, nullptr);
  EXPECT_EQ(plain->size, (Size{600, 520}));
  EXPECT_EQ(controller_.buildContent().size(), (Size{600, 520}));
  EXPECT_EQ(plain->inset, 12);
  EXPECT_EQ(window().content().chrome, WindowChrome{});
}

TEST_F(PreferencesWindowControllerTest, EveryOtherThemeIsThemedUnderATransparentTitleBar) {
  for (const AppTheme& theme : AppTheme::all()) {
    if (theme.name == "Stock") continue;
    SCOPED_TRACE(theme.name);
    open("Label", theme.name);
    ASSERT_NE(window().themed(), nullptr);
    EXPECT_EQ(window().themed()->rootSize, (Size{600, 548}));
    EXPECT_EQ(controller_.buildContent().size(), (Size{600, 548}));
    const WindowChrome& chrome = window().content().chrome;
    EXPECT_TRUE(chrome.hasFullSizeContent);
    EXPECT_TRUE(chrome.hasTransparentTitleBar);
    EXPECT_FALSE(chrome.showsTitle);
    EXPECT_EQ(chrome.appearance, theme.appearance());
  }
}

TEST_F(PreferencesWindowControllerTest, ChoosingStockFromAThemedWindowShowsThePlainThemeTab) {
  open("Theme", "Coral");
  window().choose("Theme:", "Stock");
  ASSERT_NE(window().plain(), nullptr);
  EXPECT_EQ(window().tab().identifier, "theme");
  EXPECT_EQ(window().content().chrome, WindowChrome{}) << "normal title bar and background";
  EXPECT_EQ(window().selectedItem("Theme:"), "Stock");
}

TEST_F(PreferencesWindowControllerTest, ChoosingAThemeInStockShowsTheThemedThemeTab) {
  open("Label", "Stock");
  window().clickTab(kThemeTabIndex);
  window().choose("Theme:", "Graphite");
  ASSERT_NE(window().themed(), nullptr);
  EXPECT_EQ(window().tab().identifier, "theme");
  EXPECT_EQ(controller_.selectedTabIndex(), kThemeTabIndex);
  EXPECT_EQ(window().content().chrome.appearance, Appearance::Dark);
}

TEST_F(PreferencesWindowControllerTest, ChoosingFrostMakesTheWindowClearOverTheSidebarMaterial) {
  open("Theme");
  window().choose("Theme:", "Frost");
  EXPECT_EQ(window().content().chrome.background, Color(Srgb{0, 0, 0, 0}));
  EXPECT_EQ(window().content().chrome.appearance, std::nullopt) << "follows the system";
  EXPECT_EQ(window().themed()->backdrop, Backdrop(Material::Sidebar));
}

TEST_F(PreferencesWindowControllerTest, AllThemesInTurnAndBackStayOnTheThemeTab) {
  open("Theme", "Stock");
  for (int round = 0; round < 2; ++round) {
    for (const AppTheme& theme : AppTheme::all()) {
      window().choose("Theme:", theme.name);
      EXPECT_EQ(window().plain() != nullptr, theme.name == "Stock");
      EXPECT_EQ(window().tab().identifier, "theme");
    }
  }
}

TEST_F(PreferencesWindowControllerTest, AThemedTabThatIsClickedShowsItsPageAndKeepsTheRest) {
  open("Label", "Alpine");
  const int contents = window().contentCount();
  for (int i = kTabCount - 1; i >= 0; --i) {
    window().clickTab(i);
    EXPECT_EQ(window().tab().identifier, kTabs[static_cast<std::size_t>(i)].identifier);
    EXPECT_EQ(controller_.selectedTabIndex(), i);
    for (int j = 0; j < kTabCount; ++j) {
      EXPECT_EQ(window().themed()->page.buttons[static_cast<std::size_t>(j)].isSelected, i == j);
    }
  }
  EXPECT_EQ(window().contentCount(), contents);
}

TEST_F(PreferencesWindowControllerTest, TheSelectedTabSurvivesClosingAndShowingAgain) {
  open("Label", "Sorbet");
  window().clickTab(4);
  window().close();
  controller_.showWindow();
  EXPECT_EQ(window().tab().identifier, "diagnostics");
}

TEST_F(PreferencesWindowControllerTest, PlainTabsAreNotRemembered) {
  open("Menu Bar", "Stock");
  window().clickTab(5);
  controller_.showWindow();
  EXPECT_EQ(window().tab().identifier, "menubar");
}

TEST_F(PreferencesWindowControllerTest, ASelectedTabIndexBeyondTheLastSelectsTheLastThemedTab) {
  store_.setThemeName("Alpine");
  for (const int index : {6, 17, std::numeric_limits<int>::max()}) {
    controller_.setSelectedTabIndex(index);
    controller_.showWindow();
    EXPECT_EQ(window().tab().identifier, "about");
    EXPECT_EQ(controller_.selectedTabIndex(), 5);
  }
}

TEST_F(PreferencesWindowControllerTest, ASelectedTabIndexOutOfRangeLeavesThePlainFirstTab) {
  store_.setThemeName("Stock");
  for (const int index : {6, 17, -1}) {
    controller_.setSelectedTabIndex(index);
    controller_.showWindow();
    EXPECT_EQ(window().tab().identifier, "sign");
    EXPECT_EQ(controller_.selectedTabIndex(), index);
  }
}

TEST_F(PreferencesWindowControllerTest, AClickOnATabThatIsNotThereIsOnlyRemembered) {
  open("Label", "Alpine");
  for (const int index : {6, -1}) {
    controller_.themedTabClicked(index);
    EXPECT_EQ(window().tab().identifier, "sign");
    EXPECT_EQ(controller_.selectedTabIndex(), index);
  }
}

TEST_F(PreferencesWindowControllerTest, ATabClickOverPlainContentIsOnlyRemembered) {
  open("Label", "Stock");
  controller_.themedTabClicked(2);
  EXPECT_EQ(window().tab().identifier, "sign");
  controller_.showWindow();
  EXPECT_EQ(window().tab().identifier, "menubar");
}

TEST_F(PreferencesWindowControllerTest, OnlyTheSelectedButtonIsUnderlinedAndOnlyOnce) {
  open("Label", "Paper");
  const auto underlined = [&] {
    std::vector<std::string> texts;
    for (const TabButton& button : window().themed()->page.buttons) {
      if (button.underline) texts.push_back(button.text);
    }
    return texts;
  };
  EXPECT_THAT(underlined(), ElementsAre("Label"));
  window().clickTab(2);
  window().clickTab(2);
  EXPECT_THAT(underlined(), ElementsAre("Menu Bar"));
  window().clickTab(0);
  EXPECT_THAT(underlined(), ElementsAre("Label"));
}

TEST_F(PreferencesWindowControllerTest, AThemeWithoutCardColoursShowsItsPagesWithoutACard) {
  for (const AppTheme& theme : AppTheme::all()) {
    open("Label", theme.name);
    if (!window().themed()) continue;
    EXPECT_EQ(window().themed()->card.has_value(), theme.name != "Paper") << theme.name;
  }
}

TEST_F(PreferencesWindowControllerTest, AThemeWrittenByAnotherShowsWhenTheWindowIsShown) {
  open("Label", "Alpine");
  defaults_.writeDomain(EmbeddedUserDefaults::kApplicationDomain,
                        PropertyList::Dictionary{{"ThemeName", "Stock"}});
  EXPECT_NE(window().themed(), nullptr);
  controller_.showWindow();
  EXPECT_NE(window().plain(), nullptr);
}

}  // namespace
}  // namespace vembrix
