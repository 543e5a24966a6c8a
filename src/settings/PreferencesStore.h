#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/UserDefaults.h"
#include "settings/AppTheme.h"
#include "settings/CodableColor.h"
#include "settings/ColorPalette.h"
#include "settings/HeatPalette.h"

namespace vembrix {

/// The width of the status item.
enum class MenuBarWidthMode { FitToTitle, MaxTitleLength };

/// Which of a Space's two colours the program uses.
enum class ColorMode { ColorForeground, ColorBackground };

// The stored form of the modes. Parsing compares the whole string exactly.
std::string_view rawValue(MenuBarWidthMode mode);
std::string_view rawValue(ColorMode mode);
std::optional<MenuBarWidthMode> parseMenuBarWidthMode(std::string_view raw);
std::optional<ColorMode> parseColorMode(std::string_view raw);

/// Every setting of the program: its key, its type, its default. Main thread.
///
/// Each getter reads the user defaults; a missing value or one of the wrong kind reads as the
/// default. Values are not clamped. Each setter writes and then posts didChange once; code that
/// writes a key elsewhere must post it, too.
class PreferencesStore {
 public:
  /// Default center: a setting changed.
  static constexpr std::string_view didChange = "PreferencesStoreDidChange";

  static PreferencesStore& shared();
  static const std::vector<ColorPalette>& palettes() { return builtInColorPalettes(); }
  static const std::vector<HeatPalette>& heatPalettes() { return builtInHeatPalettes(); }

  PreferencesStore(const PreferencesStore&) = delete;
  PreferencesStore& operator=(const PreferencesStore&) = delete;

  [[nodiscard]] UserDefaults& ud() const { return ud_; }

  /// The theme of the stored name: Alpine if no name is stored, Stock for an unknown one.
  [[nodiscard]] const AppTheme& theme() const;
  /// The stored name, also of an unknown theme; "Alpine" if none is stored.
  [[nodiscard]] std::string themeName() const;
  void setThemeName(std::string_view name);

  /// The heat palette of the stored name; Ember for an unknown one.
  [[nodiscard]] const HeatPalette& heatPalette() const;
  /// The stored name, also of an unknown palette; "Ember" if none is stored.
  [[nodiscard]] std::string heatPaletteName() const;
  void setHeatPaletteName(std::string_view name);

  [[nodiscard]] bool showSpaceNameInMenuBar() const;
  void setShowSpaceNameInMenuBar(bool shown);
  [[nodiscard]] bool showSignInSwipeMode() const;
  void setShowSignInSwipeMode(bool shown);
  [[nodiscard]] bool showSignAfterSelection() const;
  void setShowSignAfterSelection(bool shown);
  [[nodiscard]] bool heatMapSigns() const;
  void setHeatMapSigns(bool mapped);
  [[nodiscard]] bool instantMenuSwitch() const;
  void setInstantMenuSwitch(bool instant);

  /// The size of a label's text in points.
  [[nodiscard]] double signTextSize() const;
  void setSignTextSize(double points);
  /// The opacity, nominally 0 to 1, of the labels that a swipe reveals.
  [[nodiscard]] double signSwipeAlpha() const;
  void setSignSwipeAlpha(double alpha);

  [[nodiscard]] MenuBarWidthMode menuBarWidthMode() const;
  void setMenuBarWidthMode(MenuBarWidthMode mode);
  [[nodiscard]] ColorMode colorMode() const;
  void setColorMode(ColorMode mode);

  /// The stored colours, those of vanished Spaces included; empty if any entry is malformed. The
  /// reference is valid until the next read or write.
  [[nodiscard]] const SpaceColors& spaceColors() const;
  /// Stores nothing if a component of a colour is not finite.
  void setSpaceColors(const SpaceColors& colors);

  // These depend on the order of the desktops and are therefore defined in spaces/.

  /// The stored colours of the Space; else its default colour for both.
  [[nodiscard]] SpaceColorConfig colorConfig(std::string_view spaceUUID) const;

  /// Gives each desktop the palette's colour at its position, for the current colour mode, and
  /// keeps the colour of the other mode. Writes once. The palette must not be empty.
  void applyPalette(const ColorPalette& palette);

 private:
  PreferencesStore() : ud_(UserDefaults::standard()) {}

  [[nodiscard]] bool boolean(std::string_view key, bool defaultValue) const;
  [[nodiscard]] double number(std::string_view key, double defaultValue) const;
  void write(std::string_view key, const PropertyList& value) const;
  /// The Pastel colour at the Space's present position among the desktops.
  static CodableColor defaultColor(std::string_view spaceUUID);

  UserDefaults& ud_;
};

}  // namespace vembrix
