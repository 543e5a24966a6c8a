#include "platform/linux/menubar/DropdownWidget.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QWidgetAction>
#include <algorithm>

#include "platform/linux/Compositor.h"

namespace vembrix {
namespace {

/// What assistive programs say of the item, to which the menu leads them and not
/// to the row.
QString itemText(const SpaceRowWidget& row) {
  QString text = row.accessibleName();
  const QString description = row.accessibleDescription();
  if (!description.isEmpty()) text += QStringLiteral(", ") + description;
  // A single "&" would make a key of the sign behind it.
  return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

}  // namespace

DropdownWidget::DropdownWidget() {
  setWindowRole(QStringLiteral("menu"));
  setStyle(&style_);
  setWindowFlag(Qt::FramelessWindowHint);
  setWindowFlag(Qt::NoDropShadowWindowHint);
  setAttribute(Qt::WA_TranslucentBackground);
  // The click that closes the menu does nothing else: on the item it would
  // open the menu again.
  setAttribute(Qt::WA_NoMouseReplay);
  connect(this, &QMenu::hovered, this, [this](const QAction* action) { highlightChanged(action); });
}

DropdownWidget::~DropdownWidget() {
  removeAll();
}

void DropdownWidget::addRow(SpaceRowWidget* row) {
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

SpaceRowWidget* DropdownWidget::editedRow() const {
  const auto found =
      std::ranges::find_if(rows_, [](const SpaceRowWidget* row) { return row->state().isEditing; });
  return found == rows_.end() ? nullptr : *found;
}

void DropdownWidget::prepareEditing() {
  if (SpaceRowWidget* row = editedRow()) row->handler().cancel();
  if (!keyboard_ && isVisible()) keyboard_.emplace(*windowHandle());
}

void DropdownWidget::highlightChanged(const QAction* action) {
  const auto* item = qobject_cast<const QWidgetAction*>(action);
  auto* row = item ? static_cast<SpaceRowWidget*>(item->defaultWidget()) : nullptr;
  if (row == highlighted_) return;
  if (highlighted_) highlighted_->handler().setHighlighted(false);
  highlighted_ = row;
  if (highlighted_) highlighted_->handler().setHighlighted(true);
}

bool DropdownWidget::eventFilter(QObject* object, QEvent* event) {
  // One highlight for the pointer and the keys: where the pointer comes into a
  // row it is on no other item any more, and the arrows go on from there.
  if (event->type() == QEvent::Enter && !editedRow()) {
    const QPointF place = static_cast<QEnterEvent*>(event)->globalPosition();
    QMouseEvent move(QEvent::MouseMove, mapFromGlobal(place), place, Qt::NoButton, {}, {});
    // A move in the menu itself; setActiveAction() would scroll to the row.
    const QSignalBlocker isNotTheKeyboards(this);
    QMenu::mouseMoveEvent(&move);
    highlightChanged(nullptr);
  }
  return QMenu::eventFilter(object, event);
}

bool DropdownWidget::event(QEvent* event) {
  // The pointer is over nothing any more: no row stays lit by it.
  if (event->type() == QEvent::Leave && !editedRow()) {
    setActiveAction(nullptr);
    highlightChanged(nullptr);
  }
  return QMenu::event(event);
}

void DropdownWidget::showEvent(QShowEvent* event) {
  QMenu::showEvent(event);
  for (SpaceRowWidget* row : rows_) row->handler().setShown(true);
}

void DropdownWidget::hideEvent(QHideEvent* event) {
  highlightChanged(nullptr);
  for (SpaceRowWidget* row : rows_) {
    row->handler().cancel();
    row->handler().setShown(false);
  }
  keyboard_.reset();
  QMenu::hideEvent(event);
}

void DropdownWidget::resizeEvent(QResizeEvent* event) {
  QMenu::resizeEvent(event);
  // Without a compositor what is clear would be black.
  if (Compositor::shared().isRunning()) {
    clearMask();
  } else {
    setMask(roundedShape(rect(), MenuStyle::kCornerRadius));
  }
}

void DropdownWidget::keyPressEvent(QKeyEvent* event) {
  if (chooseByKey(*event)) {
    event->accept();
    return;
  }
  if (beginWalk(event->key())) return;
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
    close();
    action->trigger();
    return true;
  }
  return false;
}

void DropdownWidget::mouseMoveEvent(QMouseEvent* event) {
  // Else the highlight would take the keyboard from the field.
  if (!editedRow()) QMenu::mouseMoveEvent(event);
}

}  // namespace vembrix
