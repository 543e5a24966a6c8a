#include "platform/linux/menubar/RowEditField.h"

#include <QKeyEvent>
#include <utility>

namespace vembrix {
namespace {

RowKey rowKey(int key) {
  switch (key) {
    case Qt::Key_Return:
      return RowKey::Return;
    case Qt::Key_Enter:
      return RowKey::KeypadEnter;
    case Qt::Key_Escape:
      return RowKey::Escape;
    default:
      return RowKey::Other;
  }
}

}  // namespace

RowEditField::RowEditField(KeyFilter filter, QWidget* parent)
    : QLineEdit(parent), filter_(std::move(filter)) {
  setFrame(false);
  setTextMargins(2, 0, 2, 0);
  // Where the row has the name, also one that runs to the left.
  setAlignment(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter);
  // A context menu would close the menu that the field is in.
  setContextMenuPolicy(Qt::NoContextMenu);
}

bool RowEditField::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    // Keys typed here must not run commands of the menu.
    event->accept();
    return true;
  }
  return QLineEdit::event(event);
}

bool RowEditField::focusNextPrevChild(bool /*next*/) {
  return false;
}

void RowEditField::keyPressEvent(QKeyEvent* event) {
  switch (filter_(rowKey(event->key()))) {
    case KeyHandling::Passed:
      event->ignore();
      return;
    case KeyHandling::Interpreted:
      QLineEdit::keyPressEvent(event);
      break;
    case KeyHandling::Swallowed:
      break;
  }
  // Keys that mean nothing to the field must not move the menu's highlight.
  event->accept();
}

}  // namespace vembrix
