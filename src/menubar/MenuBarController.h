#pragma once

#include <array>
#include <memory>

#include "platform/NotificationCenter.h"
#include "platform/StatusItem.h"

namespace vembrix {

/// Owns the program's one status item and keeps what it shows in step with the
/// Spaces, the settings and the system's appearance; fills the dropdown anew each
/// time it opens. Main thread; made after launch, lives as long as the process.
class MenuBarController : public std::enable_shared_from_this<MenuBarController> {
 public:
  /// The status item is there, and shows its title, when this returns.
  static std::shared_ptr<MenuBarController> create();

  /// Shows the active Space anew.
  void refreshTitle();

  /// Opens the dropdown without a click.
  void openMenu() { statusItem_->openMenu(); }

  /// Brings the program to the front.
  void showPreferences();

 private:
  MenuBarController();
  void observe();
  void refreshMenuAppearance();
  /// The dropdown is about to open.
  void menuNeedsUpdate();

  std::unique_ptr<StatusItem> statusItem_;
  std::array<Observation, 4> observations_;
};

/// What a status item shows now, by the model of Spaces and the settings.
/// `hasButton`: as StatusItem tells. Main thread.
StatusItemContent statusItemContent(bool hasButton);

/// Four squares, two by two: the item's look when it shows no name.
const TemplateImage& makeIconImage();

}  // namespace vembrix
