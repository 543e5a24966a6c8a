#pragma once

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "menubar/SpaceRow.h"
#include "platform/embedded/faces/RecordingDropdownMenu.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "settings/PreferencesStore.h"

namespace vembrix {

inline constexpr Srgb kRed{1, 0, 0, 1};
inline constexpr Srgb kGlow{1, 0.64, 0.24, 0.78};
/// The tint of a row in Alpine, the default theme.
inline constexpr Srgb kAlpineTint{0.29, 0.56, 0.85, 0.16};
inline constexpr Size kBounds = row_metrics::kSize;
inline constexpr double kMiddle = kBounds.height / 2;

/// The state of a row of that label that is neither hovered nor edited.
inline SpaceRowState idle(const char* label) {
  SpaceRowState state;
  state.label = label;
  return state;
}

/// Rows in a menu that every call of open() opens anew.
class SpaceRowTest : public testing::Test {
 protected:
  RecordingSpaceRowView& open(const SpaceRow::Desktop& desktop = {.displayName = "Mail",
                                                                  .isActive = false,
                                                                  .dotColor = kRed,
                                                                  .heatGlow = {}}) {
    return *openAll({desktop}).front();
  }

  std::vector<RecordingSpaceRowView*> openAll(const std::vector<SpaceRow::Desktop>& desktops) {
    menu_.close();
    std::vector<MenuItem> items;
    items.reserve(desktops.size());
    for (const SpaceRow::Desktop& desktop : desktops) {
      items.emplace_back(SpaceRow::create(
          desktop,
          {.onSwitch = [this] { switches_ += 1; },
           .onCommitRename = [this](std::string_view name) { names_.emplace_back(name); }}));
    }
    menu_.setItems(std::move(items));
    menu_.open();
    return menu_.rows();
  }

  /// Returns a row whose name is being edited.
  RecordingSpaceRowView& edit() {
    RecordingSpaceRowView& row = open();
    row.hover();
    row.clickPencil();
    return row;
  }

  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  PreferencesStore& store_ = PreferencesStore::shared();
  RecordingDropdownMenu menu_;
  int switches_ = 0;
  std::vector<std::string> names_;
};

}  // namespace vembrix
