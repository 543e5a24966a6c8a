// The colours of a Space that depend on its position among the desktops: by default, and by
// palette.

#include <algorithm>

#include "platform/SystemLog.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

constexpr std::string_view kDefaultPalette = "Pastel";

}  // namespace

SpaceColorConfig PreferencesStore::colorConfig(std::string_view spaceUUID) const {
  const SpaceColors& colors = spaceColors();
  const auto found = colors.find(spaceUUID);
  if (found != colors.end()) return found->second;
  const CodableColor color = defaultColor(spaceUUID);
  return {color, color};
}

CodableColor PreferencesStore::defaultColor(std::string_view spaceUUID) {
  const auto palette = std::ranges::find(palettes(), kDefaultPalette, &ColorPalette::name);
  if (palette == palettes().end() || palette->colors.empty()) return CodableColor::of(kWhite);
  std::size_t place = 0;
  for (const SpaceInfo& space : SpaceManager::shared().desktops()) {
    if (space.uuid == spaceUUID) return palette->colors[place % palette->colors.size()];
    place += 1;
  }
  return palette->colors.front();
}

void PreferencesStore::applyPalette(const ColorPalette& palette) {
  if (palette.colors.empty()) programmingError("a palette without colours was applied");
  SpaceColors colors = spaceColors();
  std::size_t place = 0;
  for (const SpaceInfo& space : SpaceManager::shared().desktops()) {
    const CodableColor& color = palette.colors[place++ % palette.colors.size()];
    SpaceColorConfig& config =
        colors.try_emplace(space.uuid, colorConfig(space.uuid)).first->second;
    (colorMode() == ColorMode::ColorForeground ? config.foreground : config.background) = color;
  }
  setSpaceColors(colors);
}

}  // namespace vembrix
