#include "settings/PreferencesStore.h"
#include "ui/FormBuilder.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

PreferencesStore& store() {
  return PreferencesStore::shared();
}

Slider sliderOf(double minimum, double maximum, double value,
                std::function<void(double)> onChange) {
  return {.minimum = minimum,
          .maximum = maximum,
          .value = value,
          .onChange = std::move(onChange),
          .accessibleName = {}};
}

void heatPaletteSelected(int index, const std::string& title) {
  if (index >= 0) store().setHeatPaletteName(title);
}

Popup heatPalettePopup() {
  std::vector<std::string> names;
  for (const HeatPalette& palette : PreferencesStore::heatPalettes()) {
    names.push_back(palette.name);
  }
  return popupOf(std::move(names), store().heatPaletteName(), heatPaletteSelected);
}

}  // namespace

SettingsForm makeSignTab(const TabContext& /*context*/) {
  FormBuilder form;
  form.row("Label Text Size:",
           sliderOf(60, 300, store().signTextSize(),
                    [](double points) { store().setSignTextSize(points); }),
           FormBuilder::controlWidth);
  form.row("Swipe Opacity:",
           sliderOf(0.1, 1.0, store().signSwipeAlpha(),
                    [](double alpha) { store().setSignSwipeAlpha(alpha); }),
           FormBuilder::controlWidth);
  form.full(checkboxOf("Show desktop label during swipe transitions", store().showSignInSwipeMode(),
                       [](bool isOn) { store().setShowSignInSwipeMode(isOn); }));
  form.full(checkboxOf("Show desktop label after selection", store().showSignAfterSelection(),
                       [](bool isOn) { store().setShowSignAfterSelection(isOn); }));
  form.header("Heat Map");
  form.full(checkboxOf("Warm-tint labels by how recently you used each desktop",
                       store().heatMapSigns(), [](bool isOn) { store().setHeatMapSigns(isOn); }));
  form.row("Heat Colors:", heatPalettePopup(), FormBuilder::controlWidth);
  form.note(
      "The desktop you last clicked or typed on glows hottest, so Mission Control shows you at a "
      "glance where you came from. Swiping past a desktop doesn't warm it. The same colors tint "
      "the dots in the menu bar dropdown.");
  return form.take();
}

}  // namespace vembrix
