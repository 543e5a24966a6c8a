#include "ui/SettingsTabs.h"

#include <algorithm>
#include <utility>

#include "ui/DS.h"

namespace vembrix {

SettingsTab makeTab(int index, const TabContext& context) {
  const TabKind& kind = kTabs.at(static_cast<std::size_t>(index));
  return {.identifier = std::string(kind.identifier),
          .label = std::string(kind.label),
          .form = kind.makeForm(context)};
}

Popup popupOf(std::vector<std::string> items, std::string_view selectedTitle,
              std::function<void(int, const std::string&)> onSelect) {
  const auto found = std::ranges::find(items, selectedTitle);
  const auto selected =
      found == items.end() ? std::nullopt : std::optional(static_cast<int>(found - items.begin()));
  return {.items = std::move(items),
          .selected = selected,
          .onSelect = std::move(onSelect),
          .style = {ds::kControlFont, ds::kTextColor},
          .accessibleName = {}};
}

Checkbox checkboxOf(std::string title, bool isOn, std::function<void(bool)> onChange) {
  return {.title = std::move(title),
          .isOn = isOn,
          .onChange = std::move(onChange),
          .style = {ds::kControlFont, ds::kTextColor}};
}

}  // namespace vembrix
