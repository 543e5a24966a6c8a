#include "platform/linux/ui/ColorDialog.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/Conversions.h"
#include "platform/linux/ui/controls/ControlStyle.h"
#include "platform/linux/ui/controls/FocusRing.h"
#include "platform/linux/x11/WindowHints.h"

namespace vembrix {
namespace {

/// The distance between the dialog and the window or well beside it.
constexpr int kGap = 8;

// The number of rows in Qt's grid of swatches, which it fills column by column.
constexpr int kSwatchRows = 6;
constexpr int kSwatchColumns = 8;
constexpr int kSwatches = kSwatchRows * kSwatchColumns;

/// Sets the colours that Qt's dialogs offer: the given ones row by row, and Qt's own after them.
void offer(const std::vector<QColor>& swatches) {
  static const auto kOwn = [] {
    std::array<QColor, kSwatches> own;
    for (int i = 0; i < kSwatches; ++i) {
      own.at(static_cast<std::size_t>(i)) = QColorDialog::standardColor(i);
    }
    return own;
  }();
  for (int i = 0; i < kSwatches; ++i) {
    const int place = i % kSwatchColumns * kSwatchRows + i / kSwatchColumns;
    const auto index = static_cast<std::size_t>(i);
    QColorDialog::setStandardColor(place, index < swatches.size()
                                              ? swatches[index]
                                              : kOwn.at(static_cast<std::size_t>(place)));
  }
}

/// Returns the layout in which Qt's dialog has its swatches at the left of its other controls.
QBoxLayout* columnsOf(const QColorDialog& dialog) {
  QLayoutItem* first = dialog.layout() ? dialog.layout()->itemAt(0) : nullptr;
  return first ? qobject_cast<QBoxLayout*>(first->layout()) : nullptr;
}

/// Removes the icon and the mnemonic: no control of the settings has one.
void makePlain(QAbstractButton& button) {
  button.setIcon({});
  button.setText(button.text().remove(QLatin1Char('&')));
}

/// Keeps the grid of swatches at its leading edge, as wide as it is drawn.
void alignGrid(QLayout& swatches) {
  for (int i = 0; i < swatches.count(); ++i) {
    QWidget* part = swatches.itemAt(i)->widget();
    const bool isGrid =
        part && !qobject_cast<QLabel*>(part) && !qobject_cast<QAbstractButton*>(part);
    if (isGrid) swatches.setAlignment(part, Qt::AlignLeading);
  }
}

QRect placeOf(const QWidget& widget) {
  return {widget.mapToGlobal(QPoint()), widget.size()};
}

/// Returns the size that the window manager adds to a window.
QSize sizeOfFrame(const QWidget& window) {
  return window.frameGeometry().size() - window.size();
}

}  // namespace

ColorDialog::ColorDialog(const QColor& color, const std::vector<QColor>& swatches, QWidget& well)
    : QColorDialog(&well) {
  offer(swatches);
  setAttribute(Qt::WA_DeleteOnClose);
  // Inherits the window's colours, also when they change.
  setAttribute(Qt::WA_WindowPropagation);
  setWindowRole(QStringLiteral("color-dialog"));
  setOptions(ShowAlphaChannel | DontUseNativeDialog);
  setCurrentColor(color);
  arrangeParts();
  takeOnControls();
  new FocusRing(this);
}

void ColorDialog::takeOnControls() {
  const QFont font = nativeFont(Font{});
  setFont(font);
  for (QWidget* part : findChildren<QWidget*>()) {
    part->setFont(font);
    if (qobject_cast<QAbstractButton*>(part) || qobject_cast<QAbstractSpinBox*>(part) ||
        qobject_cast<QLineEdit*>(part) || qobject_cast<QLabel*>(part) ||
        qobject_cast<QDialogButtonBox*>(part)) {
      part->setStyle(&ControlStyle::shared());
    }
    if (auto* button = qobject_cast<QAbstractButton*>(part)) makePlain(*button);
  }
}

void ColorDialog::arrangeParts() {
  QBoxLayout* columns = columnsOf(*this);
  QLayout* swatches = columns ? columns->itemAt(0)->layout() : nullptr;
  if (!swatches) return;
  alignGrid(*swatches);
  // The items below the stretch are Qt's own colours, which the desktops' colours replace.
  bool isBelow = false;
  for (int i = 0; i < swatches->count(); ++i) {
    const QLayoutItem& item = *swatches->itemAt(i);
    if (item.expandingDirections().testFlag(Qt::Vertical) && !swatches->itemAt(i)->widget()) {
      isBelow = true;
    }
    if (QWidget* part = swatches->itemAt(i)->widget(); part && isBelow) part->hide();
  }
}

void ColorDialog::openBeside(const QWidget& well) {
  const QWidget& window = *well.window();
  const QRect free = window.screen()->availableGeometry();
  const QSize frame = sizeOfFrame(window);
  // Made narrow and high, so that it fits beside the window on most screens.
  QBoxLayout* columns = columnsOf(*this);
  if (columns) columns->setDirection(QBoxLayout::TopToBottom);
  if (columns && sizeHint().height() + frame.height() > free.height()) {
    columns->setDirection(QBoxLayout::LeftToRight);
  }
  place_ = placeBeside(window.frameGeometry(), placeOf(well), sizeHint() + frame, free);
  move(*place_);
  winId();
  hideFromTaskLists(*windowHandle());
  open();
}

void ColorDialog::changeEvent(QEvent* event) {
  QColorDialog::changeEvent(event);
  if (event->type() != QEvent::ActivationChange || !isActiveWindow()) return;
  // Placed by the window manager, and not moved by the user yet.
  const auto place = std::exchange(place_, std::nullopt);
  if (place && frameGeometry().intersects(placeOf(*parentWidget()))) move(*place);
}

void ColorDialog::done(int result) {
  const bool wasActive = isActiveWindow();
  QColorDialog::done(result);
  // Some window managers give the keyboard to another window.
  QWindow* window = parentWidget()->window()->windowHandle();
  if (wasActive && window && window->isVisible()) bringToFront(*window);
}

QPoint placeBeside(const QRect& window, const QRect& well, const QSize& dialog, const QRect& free) {
  const int width = dialog.width();
  const int height = dialog.height();
  const int rightmost = std::max(free.left(), free.right() + 1 - width);
  const int lowest = std::max(free.top(), free.bottom() + 1 - height);
  const int x = std::clamp(well.center().x() - width / 2, free.left(), rightmost);
  const int y = std::clamp(window.top(), free.top(), lowest);
  const std::array places{
      QPoint(window.right() + 1 + kGap, y),  QPoint(window.left() - kGap - width, y),
      QPoint(x, window.bottom() + 1 + kGap), QPoint(x, window.top() - kGap - height),
      QPoint(well.right() + 1 + kGap, y),    QPoint(well.left() - kGap - width, y),
      QPoint(x, well.bottom() + 1 + kGap),   QPoint(x, well.top() - kGap - height),
  };
  for (const QPoint& place : places) {
    if (free.contains(QRect(place, dialog))) return place;
  }
  // It does not fit beside the well on this screen: placed at the edge that is farther from the
  // well.
  return {well.center().x() < free.center().x() ? rightmost : free.left(), y};
}

}  // namespace vembrix
