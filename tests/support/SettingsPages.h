#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/faces/RecordingSettingsWindow.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "support/Posts.h"
#include "ui/PreferencesWindowController.h"

namespace vembrix {

/// A user in front of the settings window.
class SettingsPages : public testing::Test {
 protected:
  /// Opens the window on the tab of that label, in the theme of that name; in the stored theme if
  /// the name is empty.
  RecordingSettingsWindow& open(std::string_view tab, std::string_view theme = {}) {
    if (!theme.empty()) PreferencesStore::shared().setThemeName(theme);
    PreferencesWindowController::shared().setSelectedTabIndex(indexOf(tab));
    PreferencesWindowController::shared().showWindow();
    return window();
  }

  static RecordingSettingsWindow& window() { return *RecordingSettingsWindow::current(); }

  static int indexOf(std::string_view tab) {
    const auto found = std::ranges::find(kTabs, tab, &TabKind::label);
    return static_cast<int>(found - kTabs.begin());
  }

  /// Gives the model that many desktops on one display.
  void setDesktops(std::size_t count) {
    desktop_.setSpaceCount(count);
    SpaceManager::shared().reload();
  }

  EmbeddedDesktop& desktop_ = EmbeddedDesktop::shared();
  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
  PreferencesStore& store_ = PreferencesStore::shared();
};

}  // namespace vembrix
