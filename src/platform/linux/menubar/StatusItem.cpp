#include "platform/StatusItem.h"

#include <QPoint>
#include <utility>

#include "platform/Application.h"
#include "platform/linux/menubar/NativeMenu.h"
#include "platform/linux/menubar/StatusStrip.h"

namespace vembrix {
namespace {

class QtStatusItem : public StatusItem {
 public:
  bool hasButton() const override { return true; }

  void setContent(const StatusItemContent& content) override { strip_.setContent(content); }

  void setMenu(std::unique_ptr<DropdownMenu> menu) override { menu_ = std::move(menu); }

  DropdownMenu* menu() const override { return menu_.get(); }

  void openMenu() override { open(NativeMenu::OpenedBy::Keyboard); }

 private:
  void open(NativeMenu::OpenedBy way) {
    if (!menu_) return;
    // Every menu comes from DropdownMenu::create().
    static_cast<NativeMenu&>(*menu_).open(strip_.mapToGlobal(QPoint(0, strip_.height())), way);
  }

  StatusStrip strip_{[this] { open(NativeMenu::OpenedBy::Click); }};
  std::unique_ptr<DropdownMenu> menu_;
};

}  // namespace

std::unique_ptr<StatusItem> StatusItem::create() {
  // A window needs Qt's application to be there.
  Application::shared();
  return std::make_unique<QtStatusItem>();
}

}  // namespace vembrix
