#include "settings/PreferencesStore.h"
#include "ui/FormBuilder.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

Popup themePopup(const TabContext& context) {
  std::vector<std::string> names;
  for (const AppTheme& theme : AppTheme::all()) names.push_back(theme.name);
  return popupOf(std::move(names), PreferencesStore::shared().themeName(),
                 [selected = context.themeSelected](int index, const std::string& title) {
                   if (index >= 0) selected(title);
                 });
}

}  // namespace

SettingsForm makeThemeTab(const TabContext& context) {
  FormBuilder form;
  form.row("Theme:", themePopup(context), FormBuilder::controlWidth);
  form.note(PreferencesStore::shared().theme().blurb);
  form.note(
      "Themes restyle this window and the desktop dropdown menu. Desktop labels keep their Heat "
      "Colors palette and the menu bar keeps its Colors-tab colors — themes leave those alone.");
  return form.take();
}

}  // namespace vembrix
