#include <utility>

#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "ui/DS.h"
#include "ui/FormBuilder.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

/// Shown whenever the page is made: which palette was applied is not stored.
constexpr const char* kShownPalette = "Pastel";

constexpr const char* kTextColorTitle = "Text Color";
constexpr const char* kBackgroundColorTitle = "Background Color";

PreferencesStore& store() {
  return PreferencesStore::shared();
}

bool editsForeground() {
  return store().colorMode() == ColorMode::ColorForeground;
}

/// The colour of the two that the mode uses.
template <typename Config>
auto& usedColor(Config& config) {
  return editsForeground() ? config.foreground : config.background;
}

void colorModeChanged(int index) {
  if (index == 0) store().setColorMode(ColorMode::ColorForeground);
  if (index == 1) store().setColorMode(ColorMode::ColorBackground);
}

void paletteSelected(int index) {
  const auto& palettes = PreferencesStore::palettes();
  if (index < 0 || std::cmp_greater_equal(index, palettes.size())) return;
  store().applyPalette(palettes[static_cast<std::size_t>(index)]);
}

/// The desktop at that place among the desktops as they are now, or null.
const SpaceInfo* desktopAt(int index) {
  if (index < 0) return nullptr;
  int place = 0;
  for (const SpaceInfo& space : SpaceManager::shared().spaces()) {
    if (space.isDesktop() && place++ == index) return &space;
  }
  return nullptr;
}

void spaceColorChanged(int index, const Color& color) {
  const SpaceInfo* desktop = desktopAt(index);
  const std::optional<Srgb> srgb = color.srgb();
  if (!desktop || !srgb) return;
  SpaceColorConfig config = store().colorConfig(desktop->uuid);
  usedColor(config) = CodableColor::of(*srgb);
  SpaceColors colors = store().spaceColors();
  colors.insert_or_assign(desktop->uuid, config);
  store().setSpaceColors(colors);
}

Popup palettePopup() {
  std::vector<std::string> names;
  for (const ColorPalette& palette : PreferencesStore::palettes()) names.push_back(palette.name);
  return popupOf(std::move(names), kShownPalette,
                 [](int index, const std::string&) { paletteSelected(index); });
}

ColorGrid desktopColors() {
  ColorGrid grid{
      .wells = {}, .onChange = spaceColorChanged, .nameStyle = {ds::kBodyFont, ds::kTextColor}};
  const SpaceManager& manager = SpaceManager::shared();
  for (const SpaceInfo& space : manager.spaces()) {
    if (!space.isDesktop()) continue;
    const SpaceColorConfig config = store().colorConfig(space.uuid);
    grid.wells.push_back({manager.displayName(space), usedColor(config).srgb()});
  }
  return grid;
}

}  // namespace

SettingsForm makeColorsTab() {
  FormBuilder form;
  form.row("Color Mode:",
           popupOf({kTextColorTitle, kBackgroundColorTitle},
                   editsForeground() ? kTextColorTitle : kBackgroundColorTitle,
                   [](int index, const std::string&) { colorModeChanged(index); }),
           FormBuilder::controlWidth);
  form.row("Palette:", palettePopup(), FormBuilder::controlWidth);
  form.header("Desktop Colors");
  form.full(desktopColors());
  return form.take();
}

}  // namespace vembrix
