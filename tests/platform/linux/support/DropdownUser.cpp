#include "platform/linux/support/DropdownUser.h"

#include <QImage>
#include <QWindow>
#include <QtTest/QTest>
#include <stdexcept>
#include <utility>

#include "platform/linux/menubar/DropdownWidget.h"

namespace vembrix {

DropdownUser::DropdownUser() {
  TestSession::useNoScreen();
  menu_ = DropdownMenu::create();
}

VembrixSpaceRowView& DropdownUser::row(std::size_t index) {
  return *static_cast<DropdownWidget&>(widget()).rows().at(index);
}

void DropdownUser::open() {
  native().open(QRect(40, 24, 1, 1), NativeDropdownMenu::OpenedBy::Click);
  if (isOpen() && !QTest::qWaitForWindowExposed(&widget())) {
    throw std::runtime_error("the menu did not come to be seen");
  }
}

void DropdownUser::open(std::vector<MenuItem> items) {
  menu_->setItems(std::move(items));
  open();
}

QPoint DropdownUser::placeOf(const VembrixSpaceRowView& row, QPoint point) {
  return row.mapTo(&widget(), point);
}

void DropdownUser::pointAt(const VembrixSpaceRowView& row, QPoint point) {
  pointAt(placeOf(row, point));
}

void DropdownUser::pointAt(QPoint point) {
  // Moves twice, like a hand.
  QTest::mouseMove(&window(), point - QPoint(1, 0));
  QTest::mouseMove(&window(), point);
}

void DropdownUser::press(const VembrixSpaceRowView& row, QPoint point) {
  pointAt(row, point);
  QTest::mousePress(&window(), Qt::LeftButton, {}, placeOf(row, point));
}

void DropdownUser::release(const VembrixSpaceRowView& row, QPoint point) {
  release(placeOf(row, point));
}

void DropdownUser::release(QPoint point) {
  QTest::mouseMove(&window(), point);
  QTest::mouseRelease(&window(), Qt::LeftButton, {}, point);
}

void DropdownUser::click(const VembrixSpaceRowView& row, QPoint point) {
  press(row, point);
  release(row, point);
}

void DropdownUser::click(QAction& item) {
  const QPoint point = widget().actionGeometry(&item).center();
  pointAt(point);
  QTest::mouseClick(&window(), Qt::LeftButton, {}, point);
}

void DropdownUser::clickPencil(VembrixSpaceRowView& row) {
  pointAt(row);
  click(row, row.renameButton().geometry().center());
}

void DropdownUser::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&window(), key, modifiers);
}

void DropdownUser::type(const char* text) {
  for (const char* sign = text; *sign != '\0'; ++sign) QTest::keyClick(&window(), *sign);
}

QImage pictureOf(QWidget& widget, const QColor& ground, int scale) {
  QImage image(widget.size() * scale, QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  image.fill(ground);
  widget.render(&image, {}, {}, QWidget::DrawChildren);
  return image;
}

}  // namespace vembrix
