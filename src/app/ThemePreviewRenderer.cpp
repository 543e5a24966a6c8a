#include "app/ThemePreviewRenderer.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "settings/AppTheme.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "ui/PreferencesWindowController.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

constexpr std::string_view kOption = "--render-theme-previews";
/// The default theme, of which all tabs are drawn.
constexpr std::string_view kDefaultTheme = "Alpine";

/// Returns the argument after the option; null if either is missing.
const char* requestedDirectory(std::span<const char* const> arguments) {
  const auto option = std::ranges::find_if(
      arguments, [](const char* argument) { return std::string_view(argument) == kOption; });
  if (option == arguments.end() || std::next(option) == arguments.end()) return nullptr;
  return *std::next(option);
}

std::string lowerCase(std::string text) {
  std::ranges::transform(text, text.begin(), [](char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
  });
  return text;
}

std::string joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  return text;
}

/// Prints the path even if the file cannot be written, so that the output is always the same.
void write(const std::string& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  std::printf("wrote %s\n", path.c_str());
}

void renderSettings(const std::string& prefix, int tabCount) {
  PreferencesWindowController& controller = PreferencesWindowController::shared();
  for (int tab = 0; tab < tabCount; ++tab) {
    controller.setSelectedTabIndex(tab);
    const auto png = PreviewCanvas::shared().draw(controller.buildContent());
    const std::string_view name = kTabs[static_cast<std::size_t>(tab)].fileName;
    if (png) write(joined({prefix, "-", name, ".png"}), *png);
  }
}

void renderMenu(const AppTheme& theme, const std::string& path) {
  std::optional<MenuMock> mock = ThemePreviewRenderer::renderMenuMock(theme);
  if (!mock) return;
  if (const auto png = PreviewCanvas::shared().draw(std::move(*mock))) write(path, *png);
}

void renderAll(const std::string& directory) {
  for (const AppTheme& theme : AppTheme::all()) {
    PreferencesStore::shared().setThemeName(theme.name);
    const std::string name = lowerCase(theme.name);
    renderSettings(joined({directory, "/prefs-", name}),
                   theme.name == kDefaultTheme ? kTabCount : 1);
    renderMenu(theme, joined({directory, "/menu-", name, ".png"}));
  }
}

}  // namespace

bool ThemePreviewRenderer::runIfRequested(std::span<const char* const> arguments) {
  const char* directory = requestedDirectory(arguments);
  if (!directory) return false;
  std::error_code ignored;
  std::filesystem::create_directories(directory, ignored);
  const std::string stored = PreferencesStore::shared().themeName();
  SpaceManager::shared().reload();
  renderAll(directory);
  PreferencesStore::shared().setThemeName(stored);
  std::fflush(stdout);
  return true;
}

}  // namespace vembrix
