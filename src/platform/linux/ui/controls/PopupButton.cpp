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
  // The page determines its size; with AdjustToContents it would resize itself later.
  setSizeAdjustPolicy(AdjustToContentsOnFirstShow);
  setAccessibleName(QString::fromStdString(popup.accessibleName));
  for (const std::string& item : popup.items) addItem(QString::fromStdString(item));
  setCurrentIndex(popup.selected.value_or(-1));
  // Unlike the signal for changes, this one is emitted for the user's choices only.
  connect(this, &QComboBox::activated, this, [this, report = popup.onSelect](int index) {
    if (report) report(index, itemText(index).toStdString());
  });
}

void PopupButton::showPopup() {
  // The menu is a separate window and inherits neither style nor palette.
  QWidget* menu = view()->window();
  if (menu != window()) {
    QPalette colors = menuPalette(appearanceOf(palette()));
    // The panel is the background of its rows.
    colors.setColor(QPalette::Base, colors.color(QPalette::Window));
    for (QWidget* part : {menu, static_cast<QWidget*>(view()), view()->viewport()}) {
      part->setStyle(&ControlStyle::shared());
      part->setPalette(colors);
    }
    menu->setWindowRole(QStringLiteral("menu"));
    // Smooth corners need a compositor, which shows what is behind them.
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
