#include "app/ThemePreviewRenderer.h"

#include <gmock/gmock.h>

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "app/Launch.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/faces/RecordingPreviewCanvas.h"
#include "platform/embedded/faces/RecordingSpaceRowView.h"
#include "platform/embedded/faces/RecordingStatusItem.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "settings/AppTheme.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ThemePreviewRendererTest : public testing::Test {
 protected:
  ThemePreviewRendererTest() : folder_(testing::TempDir() + "vembrix-previews-XXXXXX") {
    EXPECT_NE(mkdtemp(folder_.data()), nullptr);
    directory_ = folder_ + "/out";
  }
  ~ThemePreviewRendererTest() override { fs::remove_all(folder_); }

  /// Runs the program with these arguments; returns its status.
  int run(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "vembrix");
    testing::internal::CaptureStdout();
    const int status = runVembrix(arguments);
    output_ = testing::internal::GetCapturedStdout();
    return status;
  }
  int render() { return run({"--render-theme-previews", directory_.c_str()}); }

  /// Returns the paths that were reported, in their order.
  std::vector<std::string> reported() const {
    std::vector<std::string> paths;
    std::istringstream lines(output_);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_TRUE(line.starts_with("wrote ")) << line;
      paths.push_back(line.substr(6));
    }
    return paths;
  }
  /// Returns the names of the files in the directory.
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory_)) {
      names.push_back(entry.path().filename());
    }
    return names;
  }
  static std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  const std::vector<RecordingPreviewCanvas::Drawing>& drawings() {
    return RecordingPreviewCanvas::shared().drawings();
  }
  /// Makes the theme current and returns its mock.
  static MenuMock mockOf(const char* name) {
    PreferencesStore::shared().setThemeName(name);
    SpaceManager::shared().reload();
    return *ThemePreviewRenderer::renderMenuMock(PreferencesStore::shared().theme());
  }

  std::string folder_;
  std::string directory_;
  std::string output_;
  EmbeddedDesktop& desktop_ = EmbeddedDesktop::shared();
};

// Files

TEST_F(ThemePreviewRendererTest, NineteenFilesAreWrittenInTheThemesOrderAndReported) {
  EXPECT_EQ(render(), 0);
  std::vector<std::string> expected;
  for (const AppTheme& theme : AppTheme::all()) {
    std::string name = theme.name;
    for (char& character : name) character = static_cast<char>(std::tolower(character));
    const std::vector<std::string> tabs =
        name == "alpine" ? std::vector<std::string>{"label", "colors",      "menubar",
                                                    "theme", "diagnostics", "about"}
                         : std::vector<std::string>{"label"};
    const std::string prefix = directory_ + "/prefs-" + name + "-";
    for (const std::string& tab : tabs) expected.push_back(prefix + tab + ".png");
    expected.push_back(directory_ + "/menu-" + name + ".png");
  }
  EXPECT_THAT(expected, SizeIs(19));
  EXPECT_EQ(reported(), expected);
  EXPECT_THAT(files(), SizeIs(19));
}

TEST_F(ThemePreviewRendererTest, AFileHoldsThePictureThatWasDrawnForIt) {
  render();
  const std::vector<std::string> paths = reported();
  for (std::size_t i = 0; i < paths.size(); ++i) {
    EXPECT_EQ(contents(paths[i]), "\x89PNG\r\n\x1a\n" + std::to_string(i)) << paths[i];
  }
}

TEST_F(ThemePreviewRendererTest, ExistingFilesAreReplaced) {
  fs::create_directories(directory_);
  std::ofstream(directory_ + "/menu-stock.png") << std::string(1000, 'x');
  render();
  EXPECT_LT(contents(directory_ + "/menu-stock.png").size(), 20U);
}

TEST_F(ThemePreviewRendererTest, TheDirectoryIsMadeWithThoseAboveIt) {
  directory_ += "/a/b";
  EXPECT_EQ(render(), 0);
  EXPECT_THAT(files(), SizeIs(19));
}

TEST_F(ThemePreviewRendererTest, ADirectoryThatCannotBeMadeStillGivesALineForEveryPicture) {
  std::ofstream(folder_ + "/out") << "a file is in the way";
  EXPECT_EQ(render(), 0);
  EXPECT_THAT(reported(), SizeIs(19));
  EXPECT_EQ(contents(folder_ + "/out"), "a file is in the way");
}

TEST_F(ThemePreviewRendererTest, PicturesThatCannotBeDrawnAreSkippedWithoutALine) {
  RecordingPreviewCanvas::shared().setAbleToDraw(false);
  EXPECT_EQ(render(), 0);
  EXPECT_EQ(output_, "");
  EXPECT_THAT(files(), IsEmpty());
}

TEST_F(ThemePreviewRendererTest, WithoutADesktopThereIsNoPictureOfTheMenu) {
  desktop_.setSpaceCount(0);
  EXPECT_EQ(render(), 0);
  EXPECT_THAT(reported(), SizeIs(12));
  EXPECT_EQ(output_.find("menu-"), std::string::npos);
}

TEST_F(ThemePreviewRendererTest, WithAFullScreenSpaceAloneThereIsNoPictureOfTheMenu) {
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  for (int i = 0; i < 4; ++i) desktop_.removeSpace(desktop_.spaceAt(0));
  render();
  EXPECT_THAT(reported(), SizeIs(12));
}

// Arguments

TEST_F(ThemePreviewRendererTest, TheOptionAsTheLastArgumentStartsTheProgramNormally) {
  MainQueue::main().after(std::chrono::seconds(1), [] { Application::shared().terminate(); });
  EXPECT_EQ(run({"--render-theme-previews"}), 0);
  EXPECT_EQ(output_, "");
  EXPECT_NE(RecordingStatusItem::current(), nullptr);
  EXPECT_THAT(drawings(), IsEmpty());
}

TEST_F(ThemePreviewRendererTest, OtherArgumentsAndOtherSpellingsAreIgnored) {
  MainQueue::main().after(std::chrono::seconds(1), [] { Application::shared().terminate(); });
  run({"--Render-Theme-Previews", directory_.c_str(), "--verbose"});
  EXPECT_THAT(drawings(), IsEmpty());
}

TEST_F(ThemePreviewRendererTest, TheFirstOptionCountsWhateverStandsBeforeIt) {
  run({"--verbose", "--render-theme-previews", directory_.c_str(), "--render-theme-previews",
       "/nowhere"});
  EXPECT_THAT(files(), SizeIs(19));
}

TEST_F(ThemePreviewRendererTest, TheProgramsOwnPathIsLookedAtToo) {
  const std::vector<const char*> arguments = {"--render-theme-previews", directory_.c_str()};
  testing::internal::CaptureStdout();
  EXPECT_TRUE(ThemePreviewRenderer::runIfRequested(arguments));
  testing::internal::GetCapturedStdout();
  EXPECT_THAT(files(), SizeIs(19));
}

TEST_F(ThemePreviewRendererTest, NothingElseOfTheProgramIsThere) {
  render();
  EXPECT_EQ(RecordingStatusItem::current(), nullptr);
  EXPECT_EQ(EmbeddedApplication::shared().delegate(), nullptr);
  EXPECT_EQ(desktop_.windows().count(), 0U);
  EXPECT_EQ(EmbeddedApplication::shared().activationPolicy(),
            Application::ActivationPolicy::Accessory);
}

// The stored theme

TEST_F(ThemePreviewRendererTest, TheStoredThemeIsWhatItWas) {
  PreferencesStore::shared().setThemeName("Coral");
  render();
  EXPECT_EQ(UserDefaults::standard().object("ThemeName"), PropertyList("Coral"));
}

TEST_F(ThemePreviewRendererTest, WithoutAStoredThemeAlpineIsStored) {
  render();
  EXPECT_EQ(UserDefaults::standard().object("ThemeName"), PropertyList("Alpine"));
}

TEST_F(ThemePreviewRendererTest, AStoredThemeThatDoesNotExistIsKept) {
  PreferencesStore::shared().setThemeName("Sunset of Old");
  render();
  EXPECT_EQ(UserDefaults::standard().object("ThemeName"), PropertyList("Sunset of Old"));
}

TEST_F(ThemePreviewRendererTest, EveryPictureIsInItsOwnTheme) {
  render();
  std::vector<std::string> shown;
  for (const auto& drawing : drawings()) {
    const auto* content = std::get_if<SettingsContent>(&drawing);
    if (!content) continue;
    const auto* themed = std::get_if<ThemedContent>(&content->body);
    shown.push_back(themed ? themed->page.tab.identifier : "plain");
  }
  EXPECT_THAT(shown, ElementsAre("plain", "sign", "colors", "menubar", "theme", "diagnostics",
                                 "about", "sign", "sign", "sign", "sign", "sign"));
}

// The menu

TEST_F(ThemePreviewRendererTest, TheMenuIsAsHighAsItsRowsNeed) {
  desktop_.setSpaceCount(3);
  const MenuMock mock = mockOf("Alpine");
  EXPECT_EQ(mock.size, (Size{240, 148}));
  EXPECT_EQ(mock.cornerRadius, 8);
  ASSERT_THAT(mock.rows, SizeIs(3));
  EXPECT_EQ(mock.rows[0].frame, (Rect{0, 118, 240, 24}));
  EXPECT_EQ(mock.rows[2].frame, (Rect{0, 70, 240, 24}));
}

TEST_F(ThemePreviewRendererTest, TheCommandsStandBelowTheRowsEachUnderASeparator) {
  desktop_.setSpaceCount(3);
  const MenuMock mock = mockOf("Alpine");
  ASSERT_THAT(mock.separators, SizeIs(2));
  ASSERT_THAT(mock.labels, SizeIs(2));
  EXPECT_EQ(mock.separators[0].frame, (Rect{12, 63, 216, 1}));
  EXPECT_EQ(mock.labels[0].frame, (Rect{14, 38, 200, 18}));
  EXPECT_EQ(mock.separators[1].frame, (Rect{12, 31, 216, 1}));
  EXPECT_EQ(mock.labels[1].frame, (Rect{14, 6, 200, 18}));
  EXPECT_EQ(mock.labels[0].text, "Preferences…");
  EXPECT_EQ(mock.labels[1].text, "Quit Vembrix");
}

TEST_F(ThemePreviewRendererTest, FullScreenSpacesHaveNoRow) {
  desktop_.addSpace("Main", EmbeddedDesktop::SpaceType::FullScreen);
  EXPECT_THAT(mockOf("Alpine").rows, SizeIs(4));
}

TEST_F(ThemePreviewRendererTest, TheDesktopsOfAllDisplaysHaveRows) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 800, 600}});
  EXPECT_THAT(mockOf("Alpine").rows, SizeIs(5));
}

TEST_F(ThemePreviewRendererTest, ADarkThemeIsDarkWhateverTheSystem) {
  const MenuMock mock = mockOf("Graphite");
  EXPECT_EQ(mock.appearance, Appearance::Dark);
  EXPECT_EQ(mock.background, (Srgb{0.17, 0.17, 0.18, 1}));
  EXPECT_EQ(mock.labels[0].color, kWhite);
  EXPECT_EQ(mock.separators[0].color, (Srgb{1, 1, 1, 0.15}));
}

TEST_F(ThemePreviewRendererTest, AThemeThatForcesNothingFollowsTheSystem) {
  desktop_.setAppearance(Appearance::Light);
  EXPECT_EQ(mockOf("Stock").background, (Srgb{0.95, 0.95, 0.95, 1}));
  EXPECT_EQ(mockOf("Stock").labels[1].color, kBlack);
  desktop_.setAppearance(Appearance::Dark);
  EXPECT_EQ(mockOf("Stock").appearance, Appearance::Dark);
  desktop_.setAppearance(std::nullopt);
  EXPECT_EQ(mockOf("Stock").appearance, Appearance::Light);
}

TEST_F(ThemePreviewRendererTest, TheCommandsAreMonospacedInAMonospacedTheme) {
  for (const AppTheme& theme : AppTheme::all()) {
    const Font font = mockOf(theme.name.c_str()).labels[0].font;
    EXPECT_EQ(font.design, theme.usesMonoFont ? Font::Design::Monospaced : Font::Design::System);
    EXPECT_EQ(font.size, std::nullopt);
  }
}

TEST_F(ThemePreviewRendererTest, TheRowsAreThoseOfTheDropdown) {
  SpaceManager::shared().reload();
  SpaceManager::shared().setName("Mail", SpaceManager::shared().spaces()[1]);
  const MenuMock mock = mockOf("Alpine");
  const auto& first = static_cast<const RecordingSpaceRowView&>(*mock.rows[0].view);
  const auto& second = static_cast<const RecordingSpaceRowView&>(*mock.rows[1].view);
  EXPECT_EQ(first.state().label, "Desktop 1");
  EXPECT_EQ(first.content().dotDescription, "current");
  EXPECT_EQ(second.state().label, "Mail");
}

}  // namespace
}  // namespace vembrix
