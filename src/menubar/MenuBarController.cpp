#include "menubar/MenuBarController.h"

#include "menubar/DropdownContent.h"
#include "platform/Application.h"
#include "platform/DropdownMenu.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "ui/PreferencesWindowController.h"

namespace vembrix {

std::shared_ptr<MenuBarController> MenuBarController::create() {
  std::shared_ptr<MenuBarController> controller(new MenuBarController());
  controller->observe();
  return controller;
}

MenuBarController::MenuBarController() : statusItem_(StatusItem::create()) {
  statusItem_->setMenu(DropdownMenu::create());
  refreshTitle();
}

void MenuBarController::observe() {
  statusItem_->menu()->setNeedsUpdateHandler([weak = weak_from_this()] {
    if (const auto controller = weak.lock()) controller->menuNeedsUpdate();
  });
  const auto refresh = [weak = weak_from_this()] {
    if (const auto controller = weak.lock()) controller->refreshTitle();
  };
  NotificationCenter& center = NotificationCenter::defaultCenter();
  observations_ = {
      center.addObserver(SpaceManager::activeChanged, refresh),
      center.addObserver(SpaceManager::didChange, refresh),
      center.addObserver(PreferencesStore::didChange, refresh),
      NotificationCenter::distributed().addObserver(notification::kInterfaceThemeChanged, refresh),
  };
}

void MenuBarController::refreshTitle() {
  refreshMenuAppearance();
  statusItem_->setContent(statusItemContent(statusItem_->hasButton()));
}

void MenuBarController::refreshMenuAppearance() {
  if (DropdownMenu* menu = statusItem_->menu()) {
    menu->setAppearance(PreferencesStore::shared().theme().appearance());
  }
}

void MenuBarController::menuNeedsUpdate() {
  // The system does not report every change of Spaces.
  SpaceManager::shared().reload();
  refreshMenuAppearance();
  if (DropdownMenu* menu = statusItem_->menu()) {
    menu->setItems(makeDropdownItems([weak = weak_from_this()] {
      if (const auto controller = weak.lock()) controller->showPreferences();
    }));
  }
}

void MenuBarController::showPreferences() {
  PreferencesWindowController::shared().showWindow();
  // The windows of an accessory stay behind other programs until it is activated.
  Application::shared().activate();
}

}  // namespace vembrix
