#include "settings/PreferencesStore.h"
#include "ui/FormBuilder.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

constexpr const char* kFitToTitle = "Fit to Title";
constexpr const char* kFixedWidth = "Fixed Width";

PreferencesStore& store() {
  return PreferencesStore::shared();
}

void widthModeChanged(int index) {
  if (index < 0) return;
  store().setMenuBarWidthMode(index == 0 ? MenuBarWidthMode::FitToTitle
                                         : MenuBarWidthMode::MaxTitleLength);
}

}  // namespace

SettingsForm makeMenuBarTab(const TabContext& /*context*/) {
  FormBuilder form;
  const bool isFixed = store().menuBarWidthMode() == MenuBarWidthMode::MaxTitleLength;
  form.row("Menu Bar Width:",
           popupOf({kFitToTitle, kFixedWidth}, isFixed ? kFixedWidth : kFitToTitle,
                   [](int index, const std::string&) { widthModeChanged(index); }),
           FormBuilder::controlWidth);
  form.full(checkboxOf("Show desktop name in menu bar", store().showSpaceNameInMenuBar(),
                       [](bool isOn) { store().setShowSpaceNameInMenuBar(isOn); }));
  form.full(checkboxOf("Instant switch (no swipe animation)", store().instantMenuSwitch(),
                       [](bool isOn) { store().setInstantMenuSwitch(isOn); }));
  return form.take();
}

}  // namespace vembrix
