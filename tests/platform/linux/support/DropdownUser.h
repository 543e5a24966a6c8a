#pragma once

#include <QMenu>
#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "platform/DropdownMenu.h"
#include "platform/linux/menubar/NativeDropdownMenu.h"
#include "platform/linux/menubar/VembrixSpaceRowView.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {

/// A dropdown on the offscreen platform and its user, whose input goes through the window as from a
/// display server.
class DropdownUser {
 public:
  DropdownUser();

  [[nodiscard]] DropdownMenu& menu() { return *menu_; }
  [[nodiscard]] QMenu& widget() { return native().widget(); }
  [[nodiscard]] bool isOpen() { return widget().isVisible(); }
  [[nodiscard]] VembrixSpaceRowView& row(std::size_t index);

  /// Opens the menu and waits until it is visible.
  void open();
  /// Opens the menu with new items.
  void open(std::vector<MenuItem> items);

  // Points in a row are in its widget's coordinates.

  void pointAt(const VembrixSpaceRowView& row, QPoint point = kName);
  /// Moves the pointer to a point inside or outside the menu's window.
  void pointAt(QPoint point);
  void press(const VembrixSpaceRowView& row, QPoint point = kName);
  void release(const VembrixSpaceRowView& row, QPoint point = kName);
  void release(QPoint point);
  void click(const VembrixSpaceRowView& row, QPoint point = kName);
  /// Clicks in the middle of an item without a widget.
  void click(QAction& item);
  /// Clicks the pencil that appears once the pointer is over the row.
  void clickPencil(VembrixSpaceRowView& row);

  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Types ASCII characters.
  void type(const char* text);

  static constexpr QPoint kDot{21, 12};
  static constexpr QPoint kName{60, 12};

 private:
  NativeDropdownMenu& native() { return static_cast<NativeDropdownMenu&>(*menu_); }
  [[nodiscard]] QWindow& window() { return *widget().windowHandle(); }
  QPoint placeOf(const VembrixSpaceRowView& row, QPoint point);

  TestSession session_;
  std::unique_ptr<DropdownMenu> menu_;
};

/// Returns a picture of the widget over that colour, at that number of pixels per point.
QImage pictureOf(QWidget& widget, const QColor& ground, int scale = 1);

}  // namespace vembrix
