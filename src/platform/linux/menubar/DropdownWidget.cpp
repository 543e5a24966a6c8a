#include "platform/linux/menubar/DropdownWidget.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QWidgetAction>
#include <algorithm>

#include "platform/linux/menubar/MenuPainting.h"
#include "platform/linux/session/Compositor.h"

namespace vembrix {
namespace {

/// Returns the item's text for assistive programs, which see the menu's items and not the rows.
QString itemText(const VembrixSpaceRowView& row) {
  QString text = row.accessibleName();
  const QString description = row.accessibleDescription();
  if (!description.isEmpty()) text += QStringLiteral(", ") + description;
  // A single "&" would make the next character a shortcut.
  return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

}  // namespace

DropdownWidget::DropdownWidget() {
  setWindowRole(QStringLiteral("menu"));
  setStyle(&style_);
  setWindowFlag(Qt::FramelessWindowHint);
  setWindowFlag(Qt::NoDropShadowWindowHint);
  setAttribute(Qt::WA_TranslucentBackground);
  // The click that closes the menu has no other effect: on the item it would open the menu again.
  setAttribute(Qt::WA_NoMouseReplay);
  connect(this, &QMenu::hovered, this, [this](const QAction* action) { highlightChanged(action); });
}

DropdownWidget::~DropdownWidget() {
  removeAll();
}

void DropdownWidget::addRow(VembrixSpaceRowView* row) {
  auto* action = new QWidgetAction(this);
  action->setDefaultWidget(row);
  const auto tell = [action, row] { action->setText(itemText(*row)); };
  tell();
  row->setNameHandler(tell);
  connect(action, &QAction::triggered, row, [row] { row->handler().activate(); });
  row->installEventFilter(this);
  addAction(action);
  rows_.push_back(row);
}

void DropdownWidget::removeAll() {
  highlighted_ = nullptr;
  rows_.clear();
  clear();
}

VembrixSpaceRowView* DropdownWidget::editedRow() const {
  const auto found = std::ranges::find_if(
      rows_, [](const VembrixSpaceRowView* row) { return row->state().isEditing; });
  return found == rows_.end() ? nullptr : *found;
}

void DropdownWidget::prepareEditing() {
  if (VembrixSpaceRowView* row = editedRow()) row->handler().cancel();
  borrowKeyboard();
}

void DropdownWidget::borrowKeyboard() {
  if (!keyboard_ && isVisible()) keyboard_.emplace(*windowHandle());
}

void DropdownWidget::highlightChanged(const QAction* action) {
  const auto* item = qobject_cast<const QWidgetAction*>(action);
  auto* row = item ? static_cast<VembrixSpaceRowView*>(item->defaultWidget()) : nullptr;
  if (row == highlighted_) return;
  if (highlighted_) highlighted_->handler().setHighlighted(false);
  highlighted_ = row;
  if (highlighted_) highlighted_->handler().setHighlighted(true);
}

bool DropdownWidget::eventFilter(QObject* object, QEvent* event) {
  // The pointer and the keys share one highlight: when the pointer enters a row, the row is
  // highlighted, and the arrow keys continue from there.
  if (event->type() == QEvent::Enter && !editedRow()) {
    const QPointF place = static_cast<QEnterEvent*>(event)->globalPosition();
    QMouseEvent move(QEvent::MouseMove, mapFromGlobal(place), place, Qt::NoButton, {}, {});
    // Makes the event a move in the menu itself, because setActiveAction() would scroll to the row.
    const QSignalBlocker isNotTheKeyboards(this);
    QMenu::mouseMoveEvent(&move);
    highlightChanged(nullptr);
  }
  return QMenu::eventFilter(object, event);
}

bool DropdownWidget::event(QEvent* event) {
  // The pointer has left: no row stays highlighted.
  if (event->type() == QEvent::Leave && !editedRow()) {
    setActiveAction(nullptr);
    highlightChanged(nullptr);
  }
  return QMenu::event(event);
}

void DropdownWidget::showEvent(QShowEvent* event) {
  QMenu::showEvent(event);
  for (VembrixSpaceRowView* row : rows_) row->handler().setShown(true);
}

void DropdownWidget::hideEvent(QHideEvent* event) {
  highlightChanged(nullptr);
  for (VembrixSpaceRowView* row : rows_) {
    row->handler().cancel();
    row->handler().setShown(false);
  }
  keyboard_.reset();
  typed_.clear();
  QMenu::hideEvent(event);
}

void DropdownWidget::resizeEvent(QResizeEvent* event) {
  QMenu::resizeEvent(event);
  // Without a compositor, transparent parts would be black.
  if (Compositor::shared().isRunning()) {
    clearMask();
  } else {
    setMask(roundedShape(rect(), kMenuCornerRadius));
  }
}

void DropdownWidget::keyPressEvent(QKeyEvent* event) {
  if (chooseByKey(*event)) {
    event->accept();
    return;
  }
  if (beginWalk(event->key())) return;
  if (!editedRow() && (chooseByDigit(*event) || selectByName(*event))) return;
  QMenu::keyPressEvent(event);
}

bool DropdownWidget::beginWalk(int key) {
  if (activeAction() || (key != Qt::Key_Up && key != Qt::Key_Down)) return false;
  QKeyEvent toTheEnd(QEvent::KeyPress, key == Qt::Key_Up ? Qt::Key_End : Qt::Key_Home,
                     Qt::NoModifier);
  QMenu::keyPressEvent(&toTheEnd);
  return true;
}

bool DropdownWidget::chooseByKey(const QKeyEvent& event) {
  if (event.modifiers() != Qt::ControlModifier) return false;
  const QKeySequence pressed(event.keyCombination());
  for (QAction* action : actions()) {
    if (!action->isEnabled() || action->shortcut() != pressed) continue;
    choose(*action);
    return true;
  }
  return false;
}

void DropdownWidget::choose(QAction& action) {
  close();
  action.trigger();
}

bool DropdownWidget::isTypingName() const {
  constexpr qint64 kPauseInMilliseconds = 1000;
  return !typed_.isEmpty() && !sinceTyped_.hasExpired(kPauseInMilliseconds);
}

bool DropdownWidget::chooseByDigit(const QKeyEvent& event) {
  const int place = event.text().size() == 1 ? event.text().front().digitValue() : -1;
  if (place < 0 || isTypingName()) return false;
  const QList<QAction*> rows = rowActions();
  if (place >= 1 && place <= rows.size()) choose(*rows[place - 1]);
  return true;
}

bool DropdownWidget::selectByName(const QKeyEvent& event) {
  const bool isText = !event.text().isEmpty() && event.text().front().isPrint();
  const bool isPlain = (event.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
  // A space by itself chooses the selected item.
  if (!isText || !isPlain || (event.text() == u" " && !isTypingName())) return false;
  const bool isSameAgain = isTypingName() && typed_ == event.text();
  if (!isTypingName()) typed_.clear();
  if (!isSameAgain) typed_ += event.text();
  sinceTyped_.start();

  const QList<QAction*> rows = rowActions();
  const qsizetype current = rows.indexOf(activeAction());
  const qsizetype first =
      isSameAgain || typed_.size() == 1 ? current + 1 : std::max(current, qsizetype{0});
  for (qsizetype i = 0; i < rows.size(); ++i) {
    QAction* row = rows[(first + i) % rows.size()];
    if (!row->text().startsWith(typed_, Qt::CaseInsensitive)) continue;
    setActiveAction(row);
    break;
  }
  return true;
}

QList<QAction*> DropdownWidget::rowActions() const {
  QList<QAction*> rows = actions();
  rows.removeIf([](QAction* action) { return !qobject_cast<QWidgetAction*>(action); });
  return rows;
}

void DropdownWidget::mouseMoveEvent(QMouseEvent* event) {
  // Otherwise the highlight would take the keyboard from the field.
  if (!editedRow()) QMenu::mouseMoveEvent(event);
}

}  // namespace vembrix
