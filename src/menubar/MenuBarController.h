#pragma once

#include <array>
#include <memory>

#include "platform/NotificationCenter.h"
#include "platform/StatusItem.h"

namespace vembrix {

/// Owns the status item, updates it when the Spaces, the settings or the system's appearance
/// change, and rebuilds the dropdown each time it opens. Main thread; created after launch, lives
/// as long as the process.
class MenuBarController : public std::enable_shared_from_this<MenuBarController> {
 public:
  /// Creates the status item, too, with its title.
  static std::shared_ptr<MenuBarController> create();

  /// Updates the status item.
  void refreshTitle();

  /// Opens the dropdown without a click.
  void openMenu() { statusItem_->openMenu(); }

  /// Shows the settings window and activates the program.
  void showPreferences();

 private:
  MenuBarController();
  void observe();
  void refreshMenuAppearance();
  /// Called when the dropdown is about to open.
  void menuNeedsUpdate();

  std::unique_ptr<StatusItem> statusItem_;
  std::array<Observation, 4> observations_;
};

/// Returns the status item's present content, from the model of Spaces and the settings.
/// `hasButton` is StatusItem::hasButton(). Main thread.
StatusItemContent statusItemContent(bool hasButton);

/// Returns the icon of an item without a name: four squares, two by two.
const TemplateImage& makeIconImage();

}  // namespace vembrix
