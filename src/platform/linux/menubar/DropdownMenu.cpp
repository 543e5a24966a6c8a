#include "platform/DropdownMenu.h"

#include <QGuiApplication>
#include <QRect>
#include <QScreen>
#include <memory>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Application.h"
#include "platform/NotificationCenter.h"
#include "platform/linux/Conversions.h"
#include "platform/linux/menubar/DropdownWidget.h"
#include "platform/linux/menubar/MenuBarAccessibility.h"
#include "platform/linux/menubar/NativeDropdownMenu.h"
#include "platform/linux/menubar/NativeSpaceRowView.h"
#include "platform/linux/menubar/strip/MenuPalette.h"

namespace vembrix {
namespace {

/// Doubles each "&", which Qt would take for a mnemonic.
QString menuTitle(const std::string& title) {
  return QString::fromStdString(title).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

std::function<void()> closureOf(MenuCommand& command) {
  if (auto* closure = std::get_if<std::function<void()>>(&command.action)) {
    return *closure ? std::move(*closure) : [] {};
  }
  return [] { Application::shared().terminate(); };
}

class QtDropdownMenu : public NativeDropdownMenu {
 public:
  QtDropdownMenu() {
    menu_.setFont(menuBarFont());
    applyAppearance();
  }

  void setNeedsUpdateHandler(std::function<void()> handler) override {
    needsUpdate_ = std::move(handler);
  }

  void setAppearance(std::optional<Appearance> appearance) override {
    if (appearance == appearance_) return;
    appearance_ = appearance;
    applyAppearance();
  }

  void setItems(std::vector<MenuItem> items) override {
    // The widgets are destroyed before the rows that they refer to.
    menu_.removeAll();
    rows_.clear();
    for (MenuItem& item : items) {
      std::visit([this](auto& content) { add(content); }, item);
    }
  }

  QMenu& widget() override { return menu_; }

  void open(const QRect& item, OpenedBy way) override {
    if (menu_.isVisible()) return;
    if (needsUpdate_) needsUpdate_();
    if (menu_.isEmpty()) return;
    const QScreen* screen = QGuiApplication::screenAt(item.center());
    const int height = menu_.sizeHint().height();
    const bool fits = !screen || item.bottom() + height <= screen->geometry().bottom();
    menu_.popup({item.left(), fits ? item.bottom() + 1 : item.top() - height});
    if (way == OpenedBy::Keyboard) menu_.borrowKeyboard();
  }

 private:
  void add(const MenuSeparator& /*separator*/) { menu_.addSeparator(); }

  void add(MenuCommand& command) {
    QAction* action = menu_.addAction(menuTitle(command.title));
    if (command.font) action->setFont(nativeFont(*command.font));
    if (command.highlight) {
      action->setData(nativeColor(*command.highlight, orLight(applied_)));
    }
    if (!command.keyEquivalent.empty()) {
      const QString key = QString::fromStdString(command.keyEquivalent).toUpper();
      action->setShortcut(QKeySequence(QStringLiteral("Ctrl+") + key));
      action->setShortcutContext(Qt::WidgetShortcut);
      action->setShortcutVisibleInContextMenu(false);
    }
    QObject::connect(action, &QAction::triggered, [run = closureOf(command)] {
      // A copy, because it may open the menu again while it runs, which replaces it.
      const auto closure = run;
      closure();
    });
  }

  void add(std::unique_ptr<SpaceRowView>& view) {
    // Every row comes from SpaceRowView::create().
    std::unique_ptr<NativeSpaceRowView> row(static_cast<NativeSpaceRowView*>(view.release()));
    row->setMenu(
        {.close = [this] { menu_.close(); }, .prepareEditing = [this] { menu_.prepareEditing(); }});
    VembrixSpaceRowView* widget = row->makeWidget();
    widget->setAppearance(orLight(applied_));
    menu_.addRow(widget);
    rows_.push_back(std::move(row));
  }

  void applyAppearance() {
    const Appearance appearance = appearance_.value_or(systemAppearance());
    if (appearance == applied_) return;
    applied_ = appearance;
    menu_.setPalette(menuPalette(appearance));
    for (VembrixSpaceRowView* row : menu_.rows()) row->setAppearance(appearance);
  }

  std::vector<std::unique_ptr<NativeSpaceRowView>> rows_;
  DropdownWidget menu_;
  std::function<void()> needsUpdate_;
  std::optional<Appearance> appearance_;
  std::optional<Appearance> applied_;
  Observation themeObservation_ = NotificationCenter::distributed().addObserver(
      notification::kInterfaceThemeChanged, [this] { applyAppearance(); });
};

}  // namespace

std::unique_ptr<DropdownMenu> DropdownMenu::create() {
  // Qt's menus need an application.
  Application::shared();
  describeMenuBar();
  return std::make_unique<QtDropdownMenu>();
}

}  // namespace vembrix
