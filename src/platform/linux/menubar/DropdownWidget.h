#pragma once

#include <QElapsedTimer>
#include <QMenu>
#include <QString>
#include <optional>
#include <vector>

#include "platform/linux/KeyboardLoan.h"
#include "platform/linux/menubar/MenuStyle.h"
#include "platform/linux/menubar/SpaceRowWidget.h"

namespace vembrix {

/// Qt's menu, with rows for desktops among its items. Main thread.
class DropdownWidget : public QMenu {
 public:
  DropdownWidget();
  ~DropdownWidget() override;

  /// Takes the row in; it goes with the item, at clear(). Choosing the item
  /// activates the row.
  void addRow(SpaceRowWidget* row);
  /// Forgets the rows and deletes all items.
  void removeAll();

  [[nodiscard]] const std::vector<SpaceRowWidget*>& rows() const { return rows_; }
  /// The row that is edited, or null.
  [[nodiscard]] SpaceRowWidget* editedRow() const;
  /// To be called before a row is edited: ends the editing of any other, and
  /// takes the keyboard focus until the menu closes.
  void prepareEditing();
  /// Takes the keyboard focus until the menu closes; once it is open.
  void borrowKeyboard();

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  /// Selects the item at that end where none is selected and the key is an arrow;
  /// Qt would not scroll to it. Whether it did.
  bool beginWalk(int key);
  void highlightChanged(const QAction* action);
  /// Chooses the command of that key equivalent; whether there is one.
  bool chooseByKey(const QKeyEvent& event);
  void choose(QAction& action);
  /// A digit chooses the row of that number, counted from 1, unless a name is being
  /// typed; returns whether it was one.
  bool chooseByDigit(const QKeyEvent& event);
  /// A letter selects the row whose name begins with what was typed within the last
  /// second, in either case; the same letter again goes on to the next such row.
  /// Returns whether the key was one.
  bool selectByName(const QKeyEvent& event);
  [[nodiscard]] bool isTypingName() const;
  /// The items of the rows, in their order.
  [[nodiscard]] QList<QAction*> rowActions() const;

  MenuStyle style_;
  std::vector<SpaceRowWidget*> rows_;
  SpaceRowWidget* highlighted_ = nullptr;
  std::optional<KeyboardLoan> keyboard_;
  /// The beginning of a name, and when its last letter was typed.
  QString typed_;
  QElapsedTimer sinceTyped_;
};

}  // namespace vembrix
