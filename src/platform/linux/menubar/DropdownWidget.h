#pragma once

#include <QElapsedTimer>
#include <QMenu>
#include <QString>
#include <optional>
#include <vector>

#include "platform/linux/menubar/KeyboardLoan.h"
#include "platform/linux/menubar/MenuStyle.h"
#include "platform/linux/menubar/VembrixSpaceRowView.h"

namespace vembrix {

/// Qt's menu, with rows for desktops among its items. Main thread.
class DropdownWidget : public QMenu {
 public:
  DropdownWidget();
  ~DropdownWidget() override;

  /// Takes ownership of the row, until clear() deletes its item. Choosing the item activates the
  /// row.
  void addRow(VembrixSpaceRowView* row);
  /// Forgets the rows and deletes all items.
  void removeAll();

  [[nodiscard]] const std::vector<VembrixSpaceRowView*>& rows() const { return rows_; }
  /// Returns the row that is being edited, or null.
  [[nodiscard]] VembrixSpaceRowView* editedRow() const;
  /// To be called before a row is edited: ends the editing of any other and takes the keyboard
  /// focus until the menu closes.
  void prepareEditing();
  /// Takes the keyboard focus until the menu closes. Needs an open menu.
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
  /// Selects the first or last item for an arrow key if none is selected, as Qt would not scroll to
  /// it. Returns whether it did.
  bool beginWalk(int key);
  void highlightChanged(const QAction* action);
  /// Chooses the command of that key equivalent; returns whether there is one.
  bool chooseByKey(const QKeyEvent& event);
  void choose(QAction& action);
  /// For a digit, chooses the row of that number, counted from 1, unless a name is being typed.
  /// Returns whether the key was a digit.
  bool chooseByDigit(const QKeyEvent& event);
  /// For a letter, selects the row whose name begins with the letters typed within the last second,
  /// ignoring case; the same letter again selects the next such row. Returns whether the key was a
  /// letter.
  bool selectByName(const QKeyEvent& event);
  [[nodiscard]] bool isTypingName() const;
  /// Returns the items of the rows, in their order.
  [[nodiscard]] QList<QAction*> rowActions() const;

  MenuStyle style_;
  std::vector<VembrixSpaceRowView*> rows_;
  VembrixSpaceRowView* highlighted_ = nullptr;
  std::optional<KeyboardLoan> keyboard_;
  /// The beginning of a name that is being typed, and the time of its last letter.
  QString typed_;
  QElapsedTimer sinceTyped_;
};

}  // namespace vembrix
