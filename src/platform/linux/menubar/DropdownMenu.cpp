#include "platform/DropdownMenu.h"

#include <QMenu>

#include "platform/Application.h"
#include "platform/NotificationCenter.h"
#include "platform/linux/NativeColor.h"
#include "platform/linux/NativeFont.h"
#include "platform/linux/menubar/NativeMenu.h"

namespace vembrix {
namespace {

class QtDropdownMenu : public NativeMenu {
 public:
  QtDropdownMenu() {
    menu_.setWindowRole(QStringLiteral("menu"));
    menu_.setFont(menuBarFont());
    // The click that closes the menu does nothing else: on the item it would
    // open the menu again.
    menu_.setAttribute(Qt::WA_NoMouseReplay);
    applyAppearance();
  }

  void setAppearance(std::optional<Appearance> appearance) override {
    if (appearance == appearance_) return;
    appearance_ = appearance;
    applyAppearance();
  }

  QMenu& widget() override { return menu_; }

 private:
  void applyAppearance() {
    const auto system = Application::shared().effectiveAppearance();
    const Appearance appearance = appearance_.value_or(system.value_or(Appearance::Light));
    if (appearance == applied_) return;
    applied_ = appearance;
    menu_.setPalette(menuPalette(appearance));
  }

  QMenu menu_;
  std::optional<Appearance> appearance_;
  std::optional<Appearance> applied_;
  Observation themeObservation_ = NotificationCenter::distributed().addObserver(
      notification::kInterfaceThemeChanged, [this] { applyAppearance(); });
};

}  // namespace

std::unique_ptr<DropdownMenu> DropdownMenu::create() {
  // A menu needs Qt's application to be there.
  Application::shared();
  return std::make_unique<QtDropdownMenu>();
}

}  // namespace vembrix
