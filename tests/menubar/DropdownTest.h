#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "menubar/MenuBarController.h"
#include "menubar/SpaceRow.h"
#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/faces/RecordingDropdownMenu.h"
#include "platform/embedded/faces/RecordingStatusItem.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "spaces/SpaceObserver.h"

namespace vembrix {

inline constexpr Srgb kPink{1.0, 0.71, 0.76};
inline constexpr Srgb kBlue{0.69, 0.83, 1.0};

/// The dropdown of the status item, from its opening to its effect on the desktop.
class DropdownTest : public testing::Test {
 protected:
  void SetUp() override {
    SpaceManager::shared().reload();
    controller_ = MenuBarController::create();
  }

  RecordingDropdownMenu& menu() {
    return static_cast<RecordingDropdownMenu&>(*RecordingStatusItem::current()->menu());
  }

  /// Closes the menu if it is open, and opens it again.
  RecordingDropdownMenu& open() {
    menu().close();
    menu().open();
    return menu();
  }

  RecordingSpaceRowView& row(std::size_t place) { return *menu().rows().at(place); }
  /// The only oval of a row's dot.
  const DotImage::Oval& dot(std::size_t place) { return row(place).content().dot.ovals.at(0); }

  /// Renames the row of that place in the open menu.
  void rename(std::size_t place, std::string_view name) {
    row(place).hover();
    row(place).clickPencil();
    row(place).type(name);
    menu().press(RowKey::Return);
  }

  std::string strip() { return RecordingStatusItem::current()->title(); }
  static std::string uuid(std::size_t place) {
    return "embedded-space-" + std::to_string(place + 1);
  }
  PropertyList storedName(std::size_t place) { return defaults_.object("SpaceNames")[uuid(place)]; }
  /// Stores the uuids in the order of use, the most recent first. To be called before the first
  /// opening.
  void setRecency(PropertyList::Array uuids) {
    defaults_.set("SpaceHeatRecency", std::move(uuids));
  }
  std::size_t activePlace() {
    const auto ids = desktop_.spaceIDs();
    return static_cast<std::size_t>(std::ranges::find(ids, desktop_.activeSpace()) - ids.begin());
  }

  TestDesktop& desktop_ = TestDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
  PreferencesStore& store_ = PreferencesStore::shared();
  SpaceObserver observer_;
  Observation arrival_ = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [this] { observer_.activeSpaceDidChange(); });
  std::shared_ptr<MenuBarController> controller_;
};

}  // namespace vembrix
