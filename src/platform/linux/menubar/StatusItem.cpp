#include "platform/StatusItem.h"

#include <QMenu>
#include <utility>

#include "platform/Application.h"
#include "platform/linux/menubar/MenuBarAccessibility.h"
#include "platform/linux/menubar/NativeDropdownMenu.h"
#include "platform/linux/menubar/strip/StatusStrip.h"
#include "platform/linux/x11/WindowHints.h"

namespace vembrix {
namespace {

class QtStatusItem : public StatusItem {
 public:
  bool hasButton() const override { return true; }

  void setContent(const StatusItemContent& content) override { strip_.setContent(content); }

  void setMenu(std::unique_ptr<DropdownMenu> menu) override {
    StatusButton& button = strip_.button();
    if (menu_) button.removeAction(widget().menuAction());
    menu_ = std::move(menu);
    if (!menu_) return;
    button.addAction(widget().menuAction());
    // The window manager does not know that the menu had the keyboard.
    QObject::connect(&widget(), &QMenu::aboutToHide, &strip_,
                     [this] { updateUserTime(*strip_.windowHandle()); });
  }

  DropdownMenu* menu() const override { return menu_.get(); }

  void openMenu() override { open(NativeDropdownMenu::OpenedBy::Keyboard); }

 private:
  /// Every menu comes from DropdownMenu::create().
  NativeDropdownMenu& native() { return static_cast<NativeDropdownMenu&>(*menu_); }
  QMenu& widget() { return native().widget(); }

  void open(NativeDropdownMenu::OpenedBy way) {
    if (menu_) native().open(strip_.itemGeometry(), way);
  }

  StatusStrip strip_{[this] { open(NativeDropdownMenu::OpenedBy::Click); }};
  std::unique_ptr<DropdownMenu> menu_;
};

}  // namespace

std::unique_ptr<StatusItem> StatusItem::create() {
  // Qt's windows need an application.
  Application::shared();
  describeMenuBar();
  return std::make_unique<QtStatusItem>();
}

}  // namespace vembrix
