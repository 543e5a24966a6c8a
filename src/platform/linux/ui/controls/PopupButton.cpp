#include "platform/linux/ui/controls/PopupButton.h"

#include <QAbstractItemView>
#include <QWheelEvent>

#include "platform/linux/menubar/strip/MenuPalette.h"
#include "platform/linux/session/Compositor.h"
#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/ControlStyle.h"

namespace vembrix {

PopupButton::PopupButton(const Popup& popup, QWidget* parent) : QComboBox(parent) {
  setStyle(&ControlStyle::shared());
  setFocusPolicy(Qt::TabFocus);
  // The page settles its size; by AdjustToContents it would resize itself later.
  setSizeAdjustPolicy(AdjustToContentsOnFirstShow);
  setAccessibleName(QString::fromStdString(popup.accessibleName));
  for (const std::string& item : popup.items) addItem(QString::fromStdString(item));
  setCurrentIndex(popup.selected.value_or(-1));
  // Activated, unlike changed, is what the user does, and only that.
  connect(this, &QComboBox::activated, this, [this, report = popup.onSelect](int index) {
    if (report) report(index, itemText(index).toStdString());
  });
}

void PopupButton::showPopup() {
  // The menu is a window of its own and inherits neither.
  QWidget* menu = view()->window();
  if (menu != window()) {
    QPalette colors = menuPalette(appearanceOf(palette()));
    // Its rows are drawn on the panel.
    colors.setColor(QPalette::Base, colors.color(QPalette::Window));
    for (QWidget* part : {menu, static_cast<QWidget*>(view()), view()->viewport()}) {
      part->setStyle(&ControlStyle::shared());
      part->setPalette(colors);
    }
    menu->setWindowRole(QStringLiteral("menu"));
    // Smooth corners need a compositor to show what is behind them.
    const bool isTranslucent = Compositor::shared().isRunning();
    menu->setAttribute(Qt::WA_TranslucentBackground, isTranslucent);
    if (isTranslucent) menu->clearMask();
  }
  QComboBox::showPopup();
}

void PopupButton::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace vembrix
