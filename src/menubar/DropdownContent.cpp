#include "menubar/DropdownContent.h"

#include <string_view>
#include <utility>

#include "menubar/ColorLegibility.h"
#include "menubar/SpaceRow.h"
#include "platform/Application.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "watchers/SpaceHeatTracker.h"

namespace vembrix {
namespace {

/// A smaller heat has no visible glow.
constexpr double kFaintHeat = 0.05;

MenuItem makeCommand(const AppTheme& theme, MenuCommand command) {
  applyThemeFont(theme, command);
  if (theme.name != AppTheme::stock().name) command.highlight = selectionTint(theme);
  return command;
}

}  // namespace

std::vector<MenuItem> makeDropdownItems(std::function<void()> showPreferences) {
  const SpaceManager& manager = SpaceManager::shared();
  constexpr std::size_t kOtherItems = 4;
  std::vector<MenuItem> items;
  items.reserve(manager.spaces().size() + kOtherItems);
  for (const SpaceInfo& space : manager.desktops()) items.emplace_back(makeSpaceRow(space));
  const AppTheme& theme = PreferencesStore::shared().theme();
  items.emplace_back(MenuSeparator{});
  items.push_back(makeCommand(theme, {.title = "Preferences…",
                                      .font = {},
                                      .keyEquivalent = ",",
                                      .action = std::move(showPreferences),
                                      .highlight = {}}));
  items.emplace_back(MenuSeparator{});
  items.push_back(makeCommand(theme, {.title = "Quit Vembrix",
                                      .font = {},
                                      .keyEquivalent = "q",
                                      .action = MenuCommand::Standard::Terminate,
                                      .highlight = {}}));
  return items;
}

std::unique_ptr<SpaceRowView> makeSpaceRow(const SpaceInfo& space) {
  const SpaceManager& manager = SpaceManager::shared();
  return SpaceRow::create(
      {.displayName = manager.displayName(space),
       .isActive = space.spaceID == manager.activeSpaceID(),
       .dotColor = dotColor(space),
       .heatGlow = heatGlow(space)},
      {.onSwitch = [space] { SpaceManager::shared().switchToSpace(space); },
       .onCommitRename =
           [space](std::string_view name) { SpaceManager::shared().setName(name, space); }});
}

Color dotColor(const SpaceInfo& space) {
  const PreferencesStore& store = PreferencesStore::shared();
  const SpaceColorConfig colors = store.colorConfig(space.uuid);
  const bool usesForeground = store.colorMode() == ColorMode::ColorForeground;
  return (usesForeground ? colors.foreground : colors.background).srgb();
}

std::optional<Color> heatGlow(const SpaceInfo& space) {
  return heatGlow(SpaceHeatTracker::shared().heat(space.uuid, IncludingActive::No));
}

std::optional<Color> heatGlow(double heat) {
  if (!(heat > kFaintHeat)) return std::nullopt;
  const PreferencesStore& store = PreferencesStore::shared();
  const std::optional<Appearance> forced = store.theme().appearance();
  const Color rim =
      adjustedForeground(store.heatPalette().rim.srgb(), forced ? *forced : systemAppearance());
  Srgb glow = rim.srgb().value_or(Srgb{});
  glow.alpha = heat;
  return glow;
}

void applyThemeFont(const AppTheme& theme, MenuCommand& command) {
  if (!theme.isPlain()) command.font = theme.font();
}

}  // namespace vembrix
