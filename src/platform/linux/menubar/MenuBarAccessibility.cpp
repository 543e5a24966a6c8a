#include "platform/linux/menubar/MenuBarAccessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QAction>
#include <QMenu>
#include <QWidgetAction>

#include "platform/linux/menubar/DropdownWidget.h"
#include "platform/linux/menubar/strip/StatusButton.h"
#include "platform/linux/menubar/strip/StatusStrip.h"

namespace vembrix {
namespace {

/// Returns the open menu, or null if it is closed.
QMenu* openMenuOf(const QWidget& button) {
  for (const QAction* action : button.actions()) {
    QMenu* menu = action->menu<QMenu*>();
    if (menu && menu->isVisible()) return menu;
  }
  return nullptr;
}

class AccessibleStatusButton : public QAccessibleWidget {
 public:
  explicit AccessibleStatusButton(StatusButton* button)
      : QAccessibleWidget(button, QAccessible::Button), button_(*button) {}

  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = openMenuOf(button_) != nullptr;
    return state;
  }

  [[nodiscard]] int childCount() const override { return openMenuOf(button_) ? 1 : 0; }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    QMenu* menu = index == 0 ? openMenuOf(button_) : nullptr;
    return menu ? QAccessible::queryAccessibleInterface(menu) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child && child->object() == openMenuOf(button_) ? 0 : -1;
  }

  [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& name) override {
    if (name == pressAction()) button_.click();
  }

 private:
  StatusButton& button_;
};

/// Describes the menu. Replaces Qt's description, whose parent, the application, does not list it.
class AccessibleDropdown : public QAccessibleWidget {
 public:
  explicit AccessibleDropdown(DropdownWidget* menu)
      : QAccessibleWidget(menu, QAccessible::PopupMenu), menu_(*menu) {}

  [[nodiscard]] QAccessibleInterface* parent() const override {
    for (QObject* owner : menu_.menuAction()->associatedObjects()) {
      if (qobject_cast<QWidget*>(owner)) return QAccessible::queryAccessibleInterface(owner);
    }
    return QAccessibleWidget::parent();
  }

  [[nodiscard]] int childCount() const override { return static_cast<int>(menu_.actions().size()); }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    QAction* action = menu_.actions().value(index);
    return action ? QAccessible::queryAccessibleInterface(action) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child ? static_cast<int>(menu_.actions().indexOf(child->object())) : -1;
  }
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
    QAction* action = menu_.actionAt(menu_.mapFromGlobal(QPoint(x, y)));
    return action ? QAccessible::queryAccessibleInterface(action) : nullptr;
  }
  [[nodiscard]] QAccessibleInterface* focusChild() const override {
    QAction* action = menu_.activeAction();
    return action ? QAccessible::queryAccessibleInterface(action) : nullptr;
  }

 private:
  DropdownWidget& menu_;
};

class AccessibleMenuItem : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  AccessibleMenuItem(QAction* action, DropdownWidget* menu) : action_(*action), menu_(*menu) {}

  [[nodiscard]] bool isValid() const override { return true; }
  [[nodiscard]] QObject* object() const override { return &action_; }
  [[nodiscard]] QWindow* window() const override { return menu_.windowHandle(); }

  [[nodiscard]] QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(&menu_);
  }
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
  int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
  [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override {
    return nullptr;
  }

  [[nodiscard]] QRect rect() const override {
    const QRect geometry = menu_.actionGeometry(&action_);
    return {menu_.mapToGlobal(geometry.topLeft()), geometry.size()};
  }

  [[nodiscard]] QAccessible::Role role() const override {
    if (action_.isSeparator()) return QAccessible::Separator;
    return row() ? QAccessible::RadioButton : QAccessible::MenuItem;
  }

  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state;
    state.invisible = !menu_.isVisible();
    state.disabled = !action_.isEnabled();
    if (action_.isSeparator()) return state;
    state.focusable = true;
    state.focused = menu_.isVisible() && menu_.activeAction() == &action_;
    if (const VembrixSpaceRowView* row = this->row()) {
      state.checkable = true;
      state.checked = row->content().isActive;
    }
    return state;
  }

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    const VembrixSpaceRowView* row = this->row();
    switch (kind) {
      case QAccessible::Name:
        return row ? row->accessibleName() : action_.text().replace("&&", "&");
      case QAccessible::Description:
        return row ? row->accessibleDescription() : QString();
      case QAccessible::Accelerator:
        return action_.shortcut().toString(QKeySequence::NativeText);
      default:
        return {};
    }
  }
  void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    const bool isAction = type == QAccessible::ActionInterface && !action_.isSeparator();
    return isAction ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& name) override {
    if (name != pressAction() || !menu_.isVisible()) return;
    // A row closes the menu itself.
    if (!row()) menu_.close();
    action_.trigger();
  }
  [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override {
    return {};
  }

 private:
  /// Returns the item's row; null for a command.
  [[nodiscard]] VembrixSpaceRowView* row() const {
    const auto* item = qobject_cast<QWidgetAction*>(&action_);
    return item ? static_cast<VembrixSpaceRowView*>(item->defaultWidget()) : nullptr;
  }

  QAction& action_;
  DropdownWidget& menu_;
};

/// Creates the description of an object. Qt owns it.
QAccessibleInterface* describe(const QString& /*className*/, QObject* object) {
  if (auto* button = dynamic_cast<StatusButton*>(object)) return new AccessibleStatusButton(button);
  if (auto* strip = dynamic_cast<StatusStrip*>(object)) {
    return new QAccessibleWidget(strip, QAccessible::Window, QStringLiteral("Vembrix"));
  }
  if (auto* menu = dynamic_cast<DropdownWidget*>(object)) return new AccessibleDropdown(menu);
  auto* action = qobject_cast<QAction*>(object);
  auto* menu = action ? dynamic_cast<DropdownWidget*>(action->parent()) : nullptr;
  return menu ? new AccessibleMenuItem(action, menu) : nullptr;
}

}  // namespace

void describeMenuBar() {
  // Qt ignores a factory that is installed already.
  QAccessible::installFactory(describe);
}

}  // namespace vembrix
