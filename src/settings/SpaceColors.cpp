// The colours of Spaces: stored, by default, and by palette.

#include <algorithm>

#include "platform/Json.h"
#include "platform/NotificationCenter.h"
#include "platform/SystemLog.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

constexpr std::string_view kSpaceColors = "SpaceColors";
constexpr std::string_view kDefaultPalette = "Pastel";

SpaceColors decode(const PropertyList& stored) {
  const PropertyList::Data* data = stored.asData();
  if (!data) return {};
  const std::optional<PropertyList> json =
      decodeJson({reinterpret_cast<const char*>(data->data()), data->size()});
  const PropertyList::Dictionary* dictionary = json ? json->asDictionary() : nullptr;
  if (!dictionary) return {};
  SpaceColors colors;
  for (const auto& [uuid, value] : *dictionary) {
    const std::optional<SpaceColorConfig> config = decodeSpaceColorConfig(value);
    if (!config) return {};
    colors.emplace(uuid, *config);
  }
  return colors;
}

std::optional<PropertyList> encodeColors(const SpaceColors& colors) {
  PropertyList::Dictionary dictionary;
  for (const auto& [uuid, config] : colors) dictionary.emplace(uuid, encode(config));
  const std::optional<std::string> text = encodeJson(PropertyList(std::move(dictionary)));
  if (!text) return std::nullopt;
  return PropertyList(PropertyList::Data(text->begin(), text->end()));
}

/// The last stored bytes and their value. A menu or a set of labels reads the colours of every
/// Space in turn; equal bytes are decoded only once.
struct Decoded {
  PropertyList stored;
  SpaceColors colors;
};

}  // namespace

const SpaceColors& PreferencesStore::spaceColors() const {
  static Decoded last;
  PropertyList stored = ud_.object(kSpaceColors);
  if (stored != last.stored) {
    last.colors = decode(stored);
    last.stored = std::move(stored);
  }
  return last.colors;
}

void PreferencesStore::setSpaceColors(const SpaceColors& colors) {
  if (const auto encoded = encodeColors(colors)) ud_.set(kSpaceColors, *encoded);
  NotificationCenter::defaultCenter().post(didChange);
}

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
  for (const SpaceInfo& space : SpaceManager::shared().spaces()) {
    if (!space.isDesktop()) continue;
    if (space.uuid == spaceUUID) return palette->colors[place % palette->colors.size()];
    place += 1;
  }
  return palette->colors.front();
}

void PreferencesStore::applyPalette(const ColorPalette& palette) {
  if (palette.colors.empty()) programmingError("a palette without colours was applied");
  SpaceColors colors = spaceColors();
  std::size_t place = 0;
  for (const SpaceInfo& space : SpaceManager::shared().spaces()) {
    if (!space.isDesktop()) continue;
    const CodableColor& color = palette.colors[place++ % palette.colors.size()];
    SpaceColorConfig& config =
        colors.try_emplace(space.uuid, colorConfig(space.uuid)).first->second;
    (colorMode() == ColorMode::ColorForeground ? config.foreground : config.background) = color;
  }
  setSpaceColors(colors);
}

}  // namespace vembrix
