#include "platform/linux/ui/controls/SelectableLine.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyleOptionFrame>
#include <QTextLayout>
#include <algorithm>

#include "platform/linux/TextMetrics.h"
#include "platform/linux/ui/controls/ControlPainting.h"
#include "platform/linux/ui/controls/ControlStyle.h"

namespace vembrix {
namespace {

using namespace control_metrics;

}  // namespace

SelectableLine::SelectableLine(const std::string& text, Bezel bezel, QWidget* parent)
    : QLineEdit(parent) {
  setStyle(&ControlStyle::shared());
  setFrame(bezel == Bezel::Rounded);
  setReadOnly(true);
  setText(QString::fromStdString(text));
  setCursorPosition(0);
  liftText();
}

void SelectableLine::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::FontChange) liftText();
}

void SelectableLine::liftText() {
  // Qt centres the line box in a field, macOS the capitals.
  if (!hasFrame()) return;
  setTextMargins(0, 0, 0, 0);
  const int drop = baseline(fieldHeight()) - centeredBaseline(font(), fieldHeight());
  if (drop > 0) setTextMargins(0, 0, 0, 2 * drop);
}

int SelectableLine::fieldHeight() const {
  return std::max(kFieldHeight, lineHeight(font()));
}

int SelectableLine::baseline() const {
  return baseline(sizeHint().height());
}

int SelectableLine::baseline(int height) const {
  if (!hasFrame()) return lineBaseline(font());
  // The baseline at which Qt draws the text.
  const QFontMetrics metrics(font());
  return (height - textMargins().bottom() - metrics.height() + 1) / 2 + metrics.ascent();
}

QSize SelectableLine::sizeHint() const {
  const QFontMetrics metrics(font());
  const int padding = hasFrame() ? kFieldPadding : 0;
  // The cursor behind the text needs another point.
  const int width = metrics.horizontalAdvance(text()) + 2 * padding + 2;
  return {width, hasFrame() ? fieldHeight() : lineHeight(font())};
}

void SelectableLine::paintEvent(QPaintEvent* event) {
  QStyleOptionFrame option;
  initStyleOption(&option);
  const QRect line =
      style()->subElementRect(QStyle::SE_LineEditContents, &option, this).adjusted(2, 0, -2, 0);
  const QFontMetrics metrics(font());
  const bool isWhole = metrics.horizontalAdvance(text()) <= line.width();
  // The user is scrolling it with the keys.
  if (hasFocus() && !isWhole) {
    QLineEdit::paintEvent(event);
    return;
  }
  QPainter painter(this);
  style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
  painter.setPen(palette().color(QPalette::Text));
  // Drawn here, because Qt's baseline would lie between two points, and so differ from that of the
  // row's label.
  paintText(painter, line,
            isWhole ? text() : metrics.elidedText(text(), Qt::ElideRight, line.width()));
}

void SelectableLine::paintText(QPainter& painter, const QRect& line, const QString& shown) const {
  QTextLayout layout(shown, font());
  layout.beginLayout();
  const QTextLine only = layout.createLine();
  layout.endLayout();
  QList<QTextLayout::FormatRange> selection;
  if (hasFocus() && hasSelectedText()) {
    QTextCharFormat format;
    format.setBackground(palette().brush(QPalette::Highlight));
    format.setForeground(palette().brush(QPalette::HighlightedText));
    selection.append({selectionStart(), selectionLength(), format});
  }
  const double left = layoutDirection() == Qt::RightToLeft
                          ? line.right() + 1 - only.naturalTextWidth()
                          : line.left();
  layout.draw(&painter, {left, baseline(height()) - only.ascent()}, selection);
}

}  // namespace vembrix
