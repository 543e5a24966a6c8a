#include "ui/SettingsTabs.h"

#include <gmock/gmock.h>

#include "platform/embedded/services/EmbeddedBundle.h"
#include "platform/embedded/services/EmbeddedWorkspace.h"
#include "support/SettingsPages.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

const ControlRow& controlRow(const SettingsForm& form, std::string_view label) {
  for (const FormRow& row : form.rows) {
    const auto* labelled = std::get_if<ControlRow>(&row);
    if (labelled && labelled->label == label) return *labelled;
  }
  throw std::out_of_range("no such row");
}

/// Describes the rows in words.
std::vector<std::string> outline(const SettingsForm& form) {
  struct Describe {
    std::string operator()(const Slider&) const { return "slider"; }
    std::string operator()(const Checkbox& box) const { return "checkbox " + box.title; }
    std::string operator()(const Popup&) const { return "popup"; }
    std::string operator()(const WrappingLabel& label) const { return "note " + label.text; }
    std::string operator()(const Header& header) const { return "header " + header.text; }
    std::string operator()(const ColorGrid&) const { return "grid"; }
    std::string operator()(const PushButton& button) const { return "button " + button.title; }
    std::string operator()(const SelectableText& text) const { return "text " + text.text; }
    std::string operator()(const CommandField& field) const { return "command " + field.text; }
    std::string operator()(const StatusLabel& label) const { return "status " + label.text; }
  };
  std::vector<std::string> lines;
  for (const FormRow& row : form.rows) {
    if (const auto* labelled = std::get_if<ControlRow>(&row)) {
      lines.push_back(labelled->label + " " + std::visit(Describe{}, labelled->control));
    } else {
      lines.push_back(std::visit(Describe{}, std::get<FullRow>(row).control));
    }
  }
  return lines;
}

class SettingsTabsTest : public SettingsPages {
 protected:
  /// Expects that the user's change stores exactly that value and posts one notification.
  void expectWritten(const std::function<void()>& act, std::string_view key,
                     const PropertyList& value) {
    Posts posts;
    act();
    EXPECT_EQ(defaults_.object(key), value) << key;
    EXPECT_THAT(posts.names(), ElementsAre(PreferencesStore::didChange)) << key;
  }

  void expectNothingWritten(const std::function<void()>& act) {
    const PropertyList before = defaults_.readDomain(EmbeddedUserDefaults::kApplicationDomain);
    Posts posts;
    act();
    EXPECT_EQ(defaults_.readDomain(EmbeddedUserDefaults::kApplicationDomain), before);
    EXPECT_THAT(posts.names(), ElementsAre());
  }
};

TEST_F(SettingsTabsTest, ThereAreSixTabsInTheirOrder) {
  std::vector<std::string> identifiers;
  open("Label", "Stock");
  for (const SettingsTab& tab : window().plain()->tabs) identifiers.push_back(tab.identifier);
  EXPECT_THAT(identifiers,
              ElementsAre("sign", "colors", "menubar", "theme", "diagnostics", "about"));
  EXPECT_THAT(window().tabLabels(),
              ElementsAre("Label", "Colors", "Menu Bar", "Theme", "Diagnostics", "About"));
}

TEST_F(SettingsTabsTest, EveryPageHasItsRowsInTheirOrder) {
  EXPECT_THAT(
      outline(open("Label").tab().form),
      ElementsAre("Label Text Size: slider", "Swipe Opacity: slider",
                  "checkbox Show desktop label during swipe transitions",
                  "checkbox Show desktop label after selection", "header Heat Map",
                  "checkbox Warm-tint labels by how recently you used each desktop",
                  "Heat Colors: popup",
                  "note The desktop you last clicked or typed on glows hottest, so Mission "
                  "Control shows you at a glance where you came from. Swiping past a desktop "
                  "doesn't warm it. The same colors tint the dots in the menu bar "
                  "dropdown."));
  EXPECT_THAT(outline(open("Colors").tab().form),
              ElementsAre("Color Mode: popup", "Palette: popup", "header Desktop Colors", "grid"));
  EXPECT_THAT(outline(open("Menu Bar").tab().form),
              ElementsAre("Menu Bar Width: popup", "checkbox Show desktop name in menu bar",
                          "checkbox Instant switch (no swipe animation)"));
  EXPECT_THAT(outline(open("Theme").tab().form),
              ElementsAre("Theme: popup", "note " + store_.theme().blurb,
                          "note Themes restyle this window and the desktop dropdown menu. Desktop "
                          "labels keep their Heat Colors palette and the menu bar keeps its "
                          "Colors-tab colors \u2014 themes leave those alone."));
  EXPECT_THAT(
      outline(open("Diagnostics").tab().form),
      ElementsAre(
          "header Reporting a problem",
          "note If desktop labels misbehave, send a diagnostic log so the issue can be "
          "tracked down. Reproduce the problem first, then click the button below and "
          "paste the result into your report.",
          "button Copy Diagnostic Log to Clipboard", "status ", "header Manual log gathering",
          "note Or run this in Terminal and paste the output:",
          "command log show --predicate 'process == \"Vembrix\"' --last 10m --style compact",
          "button Copy Command"));
  EXPECT_THAT(outline(open("About").tab().form),
              ElementsAre("header Vembrix", "Version: text development",
                          "Built: text unbundled build", "Website: button vembrix.app"));
}

TEST_F(SettingsTabsTest, ControlsAreAlignedAndSizedAsTheirKindAsksFor) {
  const SettingsForm& form = open("Label").tab().form;
  for (const char* label : {"Label Text Size:", "Swipe Opacity:"}) {
    EXPECT_EQ(controlRow(form, label).alignment, RowAlignment::Centered) << label;
    EXPECT_EQ(controlRow(form, label).controlWidth, 220) << label;
  }
  EXPECT_EQ(controlRow(form, "Heat Colors:").alignment, RowAlignment::FirstBaseline);
  EXPECT_EQ(controlRow(form, "Heat Colors:").controlWidth, 220);
  EXPECT_EQ(controlRow(form, "Heat Colors:").labelStyle.font, Font{.size = 13});
  const auto& header = std::get<FullRow>(form.rows[4]);
  EXPECT_EQ(header.topPadding, 16);
  EXPECT_EQ(std::get<Header>(header.control).style.font,
            (Font{.weight = Font::Weight::Semibold, .size = 13}));
  const auto& note = std::get<WrappingLabel>(std::get<FullRow>(form.rows.back()).control);
  EXPECT_EQ(note.style.font, Font{.size = 11});
  EXPECT_EQ(note.style.color.systemColor(), SystemColor::SecondaryLabel);
  EXPECT_EQ(note.compressionResistance, 250);
  EXPECT_EQ(controlRow(open("About").tab().form, "Version:").controlWidth, std::nullopt);
}

TEST_F(SettingsTabsTest, ControlsGoByTheNamesOfTheirRows) {
  open("Label");
  EXPECT_EQ(window().slider("Label Text Size:").accessibleName, "Label Text Size");
  EXPECT_EQ(window().popup("Heat Colors:").accessibleName, "Heat Colors");
  open("About");
  EXPECT_EQ(window().selectableText("Version:").accessibleName, "Version");
}

TEST_F(SettingsTabsTest, TheSlidersHaveTheirRangesAndDefaults) {
  open("Label");
  const Slider& size = window().slider("Label Text Size:");
  EXPECT_EQ(size.minimum, 60);
  EXPECT_EQ(size.maximum, 300);
  EXPECT_EQ(size.value, 160);
  const Slider& opacity = window().slider("Swipe Opacity:");
  EXPECT_EQ(opacity.minimum, 0.1);
  EXPECT_EQ(opacity.maximum, 1.0);
  EXPECT_EQ(opacity.value, 0.78);
}

TEST_F(SettingsTabsTest, ASliderWritesOnEveryChange) {
  open("Label");
  for (const double points : {60.0, 160.5, 300.0}) {
    expectWritten([&] { window().drag("Label Text Size:", points); }, "SignTextSize", points);
  }
  for (const double alpha : {0.1, 0.55, 1.0}) {
    expectWritten([&] { window().drag("Swipe Opacity:", alpha); }, "SignSwipeAlpha", alpha);
  }
}

TEST_F(SettingsTabsTest, EveryCheckboxWritesItsKeyEachTimeItIsToggled) {
  struct Case {
    const char* tab;
    const char* title;
    const char* key;
    bool isOnAtFirst;
  };
  for (const Case& c :
       {Case{"Label", "Show desktop label during swipe transitions", "ShowSignInSwipeMode", true},
        Case{"Label", "Show desktop label after selection", "ShowSignAfterSelection", true},
        Case{"Label", "Warm-tint labels by how recently you used each desktop", "HeatMapSigns",
             true},
        Case{"Menu Bar", "Show desktop name in menu bar", "ShowSpaceNameInMenuBar", true},
        Case{"Menu Bar", "Instant switch (no swipe animation)", "InstantMenuSwitch", false}}) {
    SCOPED_TRACE(c.title);
    open(c.tab);
    EXPECT_EQ(window().checkbox(c.title).isOn, c.isOnAtFirst);
    expectWritten([&] { window().toggle(c.title); }, c.key, !c.isOnAtFirst);
    open(c.tab);
    EXPECT_EQ(window().checkbox(c.title).isOn, !c.isOnAtFirst);
    expectWritten([&] { window().toggle(c.title); }, c.key, c.isOnAtFirst);
  }
}

TEST_F(SettingsTabsTest, EveryHeatPaletteIsStoredByItsName) {
  open("Label");
  EXPECT_THAT(window().popup("Heat Colors:").items, ElementsAre("Ember", "Ice", "Violet", "Mono"));
  EXPECT_EQ(window().selectedItem("Heat Colors:"), "Ember");
  for (const char* name : {"Ice", "Violet", "Mono", "Ember"}) {
    expectWritten([&] { window().choose("Heat Colors:", name); }, "HeatPaletteName", name);
    open("Label");
    EXPECT_EQ(window().selectedItem("Heat Colors:"), name);
  }
}

TEST_F(SettingsTabsTest, AnUnknownHeatPaletteSelectsNoItemWhileTheStoreHasEmber) {
  store_.setHeatPaletteName("Lava");
  EXPECT_EQ(open("Label").popup("Heat Colors:").selected, std::nullopt);
  EXPECT_EQ(store_.heatPalette().name, "Ember");
}

TEST_F(SettingsTabsTest, TheWidthModeIsStoredByItsRawValue) {
  open("Menu Bar");
  EXPECT_THAT(window().popup("Menu Bar Width:").items, ElementsAre("Fit to Title", "Fixed Width"));
  EXPECT_EQ(window().selectedItem("Menu Bar Width:"), "Fit to Title");
  expectWritten([&] { window().choose("Menu Bar Width:", "Fixed Width"); }, "MenuBarWidthMode",
                "maxTitleLength");
  EXPECT_EQ(open("Menu Bar").selectedItem("Menu Bar Width:"), "Fixed Width");
  expectWritten([&] { window().choose("Menu Bar Width:", "Fit to Title"); }, "MenuBarWidthMode",
                "fitToTitle");
  store_.ud().set("MenuBarWidthMode", "wide");
  EXPECT_EQ(open("Menu Bar").selectedItem("Menu Bar Width:"), "Fit to Title");
}

TEST_F(SettingsTabsTest, APopupWithoutASelectionWritesNothing) {
  for (const auto& [tab, label] :
       {std::pair{"Label", "Heat Colors:"}, std::pair{"Menu Bar", "Menu Bar Width:"},
        std::pair{"Theme", "Theme:"}, std::pair{"Colors", "Color Mode:"},
        std::pair{"Colors", "Palette:"}}) {
    const auto select = open(tab).popup(label).onSelect;
    SCOPED_TRACE(label);
    expectNothingWritten([&] { select(-1, ""); });
  }
}

TEST_F(SettingsTabsTest, ThePopupOfThemesListsAllAndShowsTheStoredOne) {
  open("Theme");
  EXPECT_THAT(window().popup("Theme:").items,
              ElementsAre("Stock", "Alpine", "Coral", "Paper", "Graphite", "Sorbet", "Frost"));
  EXPECT_EQ(window().selectedItem("Theme:"), "Alpine");
  for (const AppTheme& theme : AppTheme::all()) {
    Posts posts;
    window().choose("Theme:", theme.name);
    EXPECT_EQ(defaults_.object("ThemeName"), PropertyList(theme.name));
    EXPECT_THAT(posts.names(), ElementsAre(PreferencesStore::didChange));
    EXPECT_EQ(window().selectedItem("Theme:"), theme.name);
    EXPECT_EQ(outline(window().tab().form)[1], "note " + theme.blurb);
  }
}

TEST_F(SettingsTabsTest, AnUnknownThemeSelectsNoItemAndShowsTheBlurbOfStock) {
  store_.setThemeName("Midnight");
  open("Theme");
  EXPECT_EQ(window().popup("Theme:").selected, std::nullopt);
  const auto& note = std::get<FullRow>(window().tab().form.rows[1]);
  EXPECT_EQ(std::get<WrappingLabel>(note.control).text, AppTheme::stock().blurb);
}

TEST_F(SettingsTabsTest, AboutShowsWhatTheBundleSaysWhenItIsText) {
  EmbeddedBundle& bundle = EmbeddedBundle::shared();
  bundle.setInfo(PropertyList::Dictionary{{"CFBundleShortVersionString", "1.4.2"},
                                          {"VembrixBuildDate", "2026-11-21"}});
  open("About");
  EXPECT_EQ(window().selectableText("Version:").text, "1.4.2");
  EXPECT_EQ(window().selectableText("Built:").text, "2026-11-21");
  bundle.setInfo(PropertyList::Dictionary{{"CFBundleShortVersionString", 2},
                                          {"VembrixBuildDate", PropertyList::Date{1}}});
  open("About");
  EXPECT_EQ(window().selectableText("Version:").text, "development");
  EXPECT_EQ(window().selectableText("Built:").text, "unbundled build");
  bundle.setInfo({});
  EXPECT_EQ(open("About").selectableText("Version:").text, "development");
  EXPECT_EQ(window().selectableText("Built:").text, "unbundled build");
}

TEST_F(SettingsTabsTest, TheWebsiteOpensByItsSecureAddress) {
  open("About");
  const PushButton& link = window().button("vembrix.app");
  EXPECT_EQ(link.bezel, PushButton::Bezel::Link);
  EXPECT_EQ(link.style.color, Color(SystemColor::Link));
  window().click("vembrix.app");
  EXPECT_THAT(EmbeddedWorkspace::shared().openedURLs(), ElementsAre("https://vembrix.app"));
}

TEST_F(SettingsTabsTest, TabsDoNotFollowWhatOthersWriteUntilTheyAreMadeAnew) {
  open("Label");
  store_.setSignTextSize(90);
  EXPECT_EQ(window().slider("Label Text Size:").value, 160);
  open("Label");
  EXPECT_EQ(window().slider("Label Text Size:").value, 90);
}

TEST_F(SettingsTabsTest, AStoredSizeBeyondTheSliderIsShownAsItIsAndKept) {
  store_.setSignTextSize(5000);
  EXPECT_EQ(open("Label").slider("Label Text Size:").value, 5000);
  EXPECT_EQ(store_.signTextSize(), 5000);
}

}  // namespace
}  // namespace vembrix
