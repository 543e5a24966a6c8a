#include "settings/PreferencesStore.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/NotificationCenter.h"

namespace vembrix {
namespace {

namespace key {
constexpr std::string_view kThemeName = "ThemeName";
constexpr std::string_view kShowSpaceNameInMenuBar = "ShowSpaceNameInMenuBar";
constexpr std::string_view kHeatPaletteName = "HeatPaletteName";
constexpr std::string_view kSignTextSize = "SignTextSize";
constexpr std::string_view kSignSwipeAlpha = "SignSwipeAlpha";
constexpr std::string_view kShowSignInSwipeMode = "ShowSignInSwipeMode";
constexpr std::string_view kShowSignAfterSelection = "ShowSignAfterSelection";
constexpr std::string_view kHeatMapSigns = "HeatMapSigns";
constexpr std::string_view kMenuBarWidthMode = "MenuBarWidthMode";
constexpr std::string_view kInstantMenuSwitch = "InstantMenuSwitch";
constexpr std::string_view kColorMode = "ColorMode";
constexpr std::string_view kSpaceColors = "SpaceColors";
}  // namespace key

constexpr std::string_view kDefaultThemeName = "Alpine";

template <typename Mode>
using RawValues = std::array<std::pair<Mode, std::string_view>, 2>;

constexpr RawValues<MenuBarWidthMode> kWidthModes = {
    {{MenuBarWidthMode::FitToTitle, "fitToTitle"},
     {MenuBarWidthMode::MaxTitleLength, "maxTitleLength"}}};
constexpr RawValues<ColorMode> kColorModes = {{{ColorMode::ColorForeground, "colorForeground"},
                                               {ColorMode::ColorBackground, "colorBackground"}}};

template <typename Mode>
std::string_view rawValueIn(const RawValues<Mode>& table, Mode mode) {
  return std::ranges::find(table, mode, &std::pair<Mode, std::string_view>::first)->second;
}

template <typename Mode>
std::optional<Mode> parseIn(const RawValues<Mode>& table, std::string_view raw) {
  const auto found = std::ranges::find(table, raw, &std::pair<Mode, std::string_view>::second);
  return found == table.end() ? std::nullopt : std::optional(found->first);
}

/// A stored string, or the default; valid as long as `value`.
std::string_view stringOr(const PropertyList& value, std::string_view defaultValue) {
  const std::string* text = value.asString();
  return text ? std::string_view(*text) : defaultValue;
}

}  // namespace

std::string_view rawValue(MenuBarWidthMode mode) {
  return rawValueIn(kWidthModes, mode);
}
std::string_view rawValue(ColorMode mode) {
  return rawValueIn(kColorModes, mode);
}

std::optional<MenuBarWidthMode> parseMenuBarWidthMode(std::string_view raw) {
  return parseIn(kWidthModes, raw);
}
std::optional<ColorMode> parseColorMode(std::string_view raw) {
  return parseIn(kColorModes, raw);
}

PreferencesStore& PreferencesStore::shared() {
  static PreferencesStore store;
  return store;
}

bool PreferencesStore::boolean(std::string_view key, bool defaultValue) const {
  return ud_.object(key).boolean().value_or(defaultValue);
}

double PreferencesStore::number(std::string_view key, double defaultValue) const {
  return ud_.object(key).number().value_or(defaultValue);
}

void PreferencesStore::write(std::string_view key, const PropertyList& value) const {
  ud_.set(key, value);
  NotificationCenter::defaultCenter().post(didChange);
}

const AppTheme& PreferencesStore::theme() const {
  const PropertyList stored = ud_.object(key::kThemeName);
  const std::string_view name = stringOr(stored, kDefaultThemeName);
  const auto found = std::ranges::find(AppTheme::all(), name, &AppTheme::name);
  return found == AppTheme::all().end() ? AppTheme::stock() : *found;
}

std::string PreferencesStore::themeName() const {
  return std::string(stringOr(ud_.object(key::kThemeName), kDefaultThemeName));
}
void PreferencesStore::setThemeName(std::string_view name) {
  write(key::kThemeName, std::string(name));
}

const HeatPalette& PreferencesStore::heatPalette() const {
  const PropertyList stored = ud_.object(key::kHeatPaletteName);
  const std::string_view name = stringOr(stored, heatPalettes().front().name);
  const auto found = std::ranges::find(heatPalettes(), name, &HeatPalette::name);
  return found == heatPalettes().end() ? heatPalettes().front() : *found;
}

std::string PreferencesStore::heatPaletteName() const {
  return std::string(stringOr(ud_.object(key::kHeatPaletteName), heatPalettes().front().name));
}
void PreferencesStore::setHeatPaletteName(std::string_view name) {
  write(key::kHeatPaletteName, std::string(name));
}

bool PreferencesStore::showSpaceNameInMenuBar() const {
  return boolean(key::kShowSpaceNameInMenuBar, true);
}
void PreferencesStore::setShowSpaceNameInMenuBar(bool shown) {
  write(key::kShowSpaceNameInMenuBar, shown);
}

bool PreferencesStore::showSignInSwipeMode() const {
  return boolean(key::kShowSignInSwipeMode, true);
}
void PreferencesStore::setShowSignInSwipeMode(bool shown) {
  write(key::kShowSignInSwipeMode, shown);
}

bool PreferencesStore::showSignAfterSelection() const {
  return boolean(key::kShowSignAfterSelection, true);
}
void PreferencesStore::setShowSignAfterSelection(bool shown) {
  write(key::kShowSignAfterSelection, shown);
}

bool PreferencesStore::heatMapSigns() const {
  return boolean(key::kHeatMapSigns, true);
}
void PreferencesStore::setHeatMapSigns(bool mapped) {
  write(key::kHeatMapSigns, mapped);
}

bool PreferencesStore::instantMenuSwitch() const {
  return boolean(key::kInstantMenuSwitch, false);
}
void PreferencesStore::setInstantMenuSwitch(bool instant) {
  write(key::kInstantMenuSwitch, instant);
}

double PreferencesStore::signTextSize() const {
  return number(key::kSignTextSize, 160.0);
}
void PreferencesStore::setSignTextSize(double points) {
  write(key::kSignTextSize, points);
}

double PreferencesStore::signSwipeAlpha() const {
  return number(key::kSignSwipeAlpha, 0.78);
}
void PreferencesStore::setSignSwipeAlpha(double alpha) {
  write(key::kSignSwipeAlpha, alpha);
}

MenuBarWidthMode PreferencesStore::menuBarWidthMode() const {
  const PropertyList stored = ud_.object(key::kMenuBarWidthMode);
  return parseMenuBarWidthMode(stringOr(stored, {})).value_or(MenuBarWidthMode::FitToTitle);
}
void PreferencesStore::setMenuBarWidthMode(MenuBarWidthMode mode) {
  write(key::kMenuBarWidthMode, std::string(rawValue(mode)));
}

ColorMode PreferencesStore::colorMode() const {
  const PropertyList stored = ud_.object(key::kColorMode);
  return parseColorMode(stringOr(stored, {})).value_or(ColorMode::ColorBackground);
}
void PreferencesStore::setColorMode(ColorMode mode) {
  write(key::kColorMode, std::string(rawValue(mode)));
}

const SpaceColors& PreferencesStore::spaceColors() const {
  // A menu or a set of labels reads the colours of every Space in turn: equal bytes are decoded
  // only once.
  static PropertyList lastStored;
  static SpaceColors lastColors;
  PropertyList stored = ud_.object(key::kSpaceColors);
  if (stored != lastStored) {
    lastColors = decodeSpaceColors(stored);
    lastStored = std::move(stored);
  }
  return lastColors;
}
void PreferencesStore::setSpaceColors(const SpaceColors& colors) {
  if (const auto encoded = encode(colors)) ud_.set(key::kSpaceColors, *encoded);
  NotificationCenter::defaultCenter().post(didChange);
}

}  // namespace vembrix
