#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "ui/DS.h"
#include "ui/FormBuilder.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

/// The palette that a new page shows: the applied one is not stored.
constexpr const char* kShownPalette = "Pastel";

constexpr const char* kTextColorTitle = "Text Color";
constexpr const char* kBackgroundColorTitle = "Background Color";

PreferencesStore& store() {
  return PreferencesStore::shared();
}

bool editsForeground() {
  return store().colorMode() == ColorMode::ColorForeground;
}

/// Returns the one of the two colours that the mode uses.
template <typename Config>
auto& usedColor(Config& config) {
  return editsForeground() ? config.foreground : config.background;
}

void colorModeChanged(int index) {
  if (index == 0) store().setColorMode(ColorMode::ColorForeground);
  if (index == 1) store().setColorMode(ColorMode::ColorBackground);
}

/// Returns the palette at that place in the popup, or null.
const ColorPalette* paletteAt(int index) {
  const auto& palettes = PreferencesStore::palettes();
  if (index < 0 || std::cmp_greater_equal(index, palettes.size())) return nullptr;
  return &palettes[static_cast<std::size_t>(index)];
}

/// Returns the desktop at that place among the present desktops, or null.
const SpaceInfo* desktopAt(int index) {
  if (index < 0) return nullptr;
  for (const SpaceInfo& space : SpaceManager::shared().desktops()) {
    if (index-- == 0) return &space;
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

/// The palette that the page's popup shows.
using ShownPalette = std::shared_ptr<const ColorPalette*>;

ShownPalette firstShownPalette() {
  const auto& palettes = PreferencesStore::palettes();
  const auto found = std::ranges::find(palettes, kShownPalette, &ColorPalette::name);
  return std::make_shared<const ColorPalette*>(found == palettes.end() ? nullptr : &*found);
}

Popup palettePopup(const ShownPalette& shown) {
  std::vector<std::string> names;
  for (const ColorPalette& palette : PreferencesStore::palettes()) names.push_back(palette.name);
  return popupOf(std::move(names), kShownPalette, [shown](int index, const std::string&) {
    const ColorPalette* palette = paletteAt(index);
    if (!palette) return;
    *shown = palette;
    store().applyPalette(*palette);
  });
}

/// Returns the present desktops with their colours.
std::vector<ColorGrid::Well> desktopColors() {
  std::vector<ColorGrid::Well> desktops;
  const SpaceManager& manager = SpaceManager::shared();
  for (const SpaceInfo& space : manager.desktops()) {
    const SpaceColorConfig config = store().colorConfig(space.uuid);
    desktops.push_back({manager.displayName(space), usedColor(config).srgb()});
  }
  return desktops;
}

/// Returns the palette's colours, and those of the desktops that are not among them.
std::vector<ColorGrid::Well> swatchesOf(const ColorPalette* palette) {
  std::vector<ColorGrid::Well> swatches;
  if (palette) {
    for (const CodableColor& color : palette->colors) {
      swatches.push_back({palette->name + " " + std::to_string(swatches.size() + 1), color.srgb()});
    }
  }
  for (ColorGrid::Well& desktop : desktopColors()) {
    const auto same = std::ranges::find(swatches, desktop.color, &ColorGrid::Well::color);
    if (same == swatches.end()) swatches.push_back(std::move(desktop));
  }
  return swatches;
}

}  // namespace

SettingsForm makeColorsTab(const TabContext& /*context*/) {
  FormBuilder form;
  form.row("Color Mode:",
           popupOf({kTextColorTitle, kBackgroundColorTitle},
                   editsForeground() ? kTextColorTitle : kBackgroundColorTitle,
                   [](int index, const std::string&) { colorModeChanged(index); }),
           FormBuilder::controlWidth);
  const ShownPalette palette = firstShownPalette();
  form.row("Palette:", palettePopup(palette), FormBuilder::controlWidth);
  form.header("Desktop Colors");
  form.full(ColorGrid{.wells = desktopColors(),
                      .onChange = spaceColorChanged,
                      .nameStyle = {ds::kBodyFont, ds::kTextColor},
                      .swatches = [palette] { return swatchesOf(*palette); }});
  return form.take();
}

}  // namespace vembrix
