#include "platform/linux/menubar/VembrixSpaceRowView.h"

#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPaintDevice>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <chrono>

#include "platform/linux/Conversions.h"
#include "platform/linux/TextMetrics.h"
#include "platform/linux/menubar/MenuPainting.h"
#include "platform/linux/menubar/strip/MenuPalette.h"

namespace vembrix {
namespace {

using namespace row_metrics;

constexpr double kFocusRingWidth = 2;

/// Converts from Qt's coordinates to the row's.
Point flipped(const QPointF& place, const QWidget& row) {
  return {place.x(), row.height() - place.y()};
}

Size boundsOf(const QWidget& row) {
  return {static_cast<double>(row.width()), static_cast<double>(row.height())};
}

SpaceRowLayout layoutOf(const QWidget& row) {
  return layOutRow(boundsOf(row));
}

/// Converts from the row's coordinates to Qt's.
QRect flipped(const Rect& frame, const QWidget& row) {
  return QRectF(frame.x, row.height() - frame.y - frame.height, frame.width, frame.height).toRect();
}

/// Returns the name as one line.
QString lineOf(const std::string& name) {
  QString line = QString::fromStdString(name);
  const auto breaksLines = [](QChar sign) {
    const QChar::Category category = sign.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
  };
  std::ranges::replace_if(line, breaksLines, QLatin1Char(' '));
  return line;
}

/// Returns the outline of a pencil that points to the bottom left, around the origin, for a disc of
/// 16 points.
QPainterPath pencil() {
  QPainterPath path;
  // The eraser, the shaft and the tip.
  path.addRect(-1.5, -5.1, 3, 1.5);
  path.addRect(-1.5, -3.1, 3, 4.9);
  path.addPolygon(QPolygonF({{-1.5, 2.3}, {1.5, 2.3}, {0, 5.2}}));
  path.closeSubpath();
  QTransform turn;
  turn.rotate(45);
  return turn.map(path);
}

}  // namespace

RenameButton::RenameButton(const QString& title, QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::NoFocus);
  setToolTip(title);
  setAccessibleName(title);
}

void RenameButton::setColor(const QColor& color) {
  color_ = color;
  update();
}

void RenameButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(QRectF(rect()).center());
  QPainterPath symbol;
  symbol.addEllipse(QPointF(), kRenameSymbolSize / 2, kRenameSymbolSize / 2);
  QColor color = color_;
  if (isDown()) color = color.darker(130);
  // The disc has a hole in the shape of the pencil, so that the tint shows through.
  painter.fillPath(symbol.subtracted(pencil()), color);
}

// Events that the button ignores must not reach the row behind it.

void RenameButton::mousePressEvent(QMouseEvent* event) {
  QAbstractButton::mousePressEvent(event);
  event->accept();
}

void RenameButton::mouseReleaseEvent(QMouseEvent* event) {
  QAbstractButton::mouseReleaseEvent(event);
  event->accept();
}

VembrixSpaceRowView::VembrixSpaceRowView(const SpaceRowContent& content, const SpaceRowState& state,
                                         SpaceRowHandler& handler)
    : content_(content),
      state_(state),
      handler_(handler),
      renameButton_(new RenameButton(QString::fromStdString(content.renameTitle), this)) {
  setFont(nativeFont(content_.font));
  setMouseTracking(true);
  setAccessibleDescription(QString::fromStdString(content_.dotDescription));
  connect(renameButton_, &QAbstractButton::clicked, this, [this] { handler_.renameClicked(); });
  setAppearance(appearance_);
  applyState();
}

void VembrixSpaceRowView::setAppearance(Appearance appearance) {
  appearance_ = appearance;
  renameButton_->setColor(nativeColor(Color(SystemColor::SecondaryLabel), appearance));
  if (editField_) editField_->setPalette(editFieldPalette(appearance));
  update();
}

void VembrixSpaceRowView::stateChanged(bool wasEditing) {
  applyState();
  if (state_.isEditing && !wasEditing) beginEditing();
  // If the pointer rests on the row when editing ends, no event reports that.
  if (wasEditing && !state_.isEditing) {
    looking_ = MainQueue::main().schedule(
        std::chrono::duration_cast<Duration>(std::chrono::duration<double>(kHoverInterval)),
        [this] { handler_.setHovered(underMouse()); });
  }
}

void VembrixSpaceRowView::applyState() {
  const QString name = QString::fromStdString(state_.label);
  if (name != accessibleName()) {
    setAccessibleName(name);
    if (nameChanged_) nameChanged_();
  }
  renameButton_->setVisible(state_.showsRenameButton);
  if (state_.isEditing) {
    editField().show();
  } else if (editField_) {
    // A focused field that is hidden would pass the focus to the next item.
    editField_->clearFocus();
    editField_->hide();
  }
  update();
}

void VembrixSpaceRowView::beginEditing() {
  editField_->setText(QString::fromStdString(state_.label));
  editField_->setFocus(Qt::OtherFocusReason);
  editField_->selectAll();
}

RowEditField& VembrixSpaceRowView::editField() {
  if (editField_) return *editField_;
  editField_ = new RowEditField([this](RowKey key) { return handler_.keyDown(key); }, this);
  editField_->hide();
  editField_->setFont(font());
  editField_->setPalette(editFieldPalette(appearance_));
  editField_->setAccessibleName(renameButton_->accessibleName());
  placeEditField();
  return *editField_;
}

void VembrixSpaceRowView::placeEditField() {
  editField_->setGeometry(flipped(layoutOf(*this).editField, *this));
}

QSize VembrixSpaceRowView::sizeHint() const {
  return {static_cast<int>(kSize.width), static_cast<int>(kSize.height)};
}

bool VembrixSpaceRowView::event(QEvent* event) {
  if (event->type() == QEvent::Enter) handler_.setHovered(true);
  if (event->type() == QEvent::Leave) handler_.setHovered(false);
  return QWidget::event(event);
}

void VembrixSpaceRowView::resizeEvent(QResizeEvent* /*event*/) {
  renameButton_->setGeometry(flipped(layoutOf(*this).renameButton, *this));
  if (editField_) placeEditField();
}

void VembrixSpaceRowView::mousePressEvent(QMouseEvent* event) {
  // Otherwise the menu takes the press for one on an item without a widget.
  event->accept();
}

void VembrixSpaceRowView::mouseMoveEvent(QMouseEvent* event) {
  handler_.setHovered(rect().contains(event->position().toPoint()));
  event->accept();
}

void VembrixSpaceRowView::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  const Point point = flipped(event->position(), *this);
  // The button may have been pressed here and released elsewhere.
  if (handler_.hitTest(point, boundsOf(*this)) == RowPart::None) return;
  handler_.mouseUp(point, boundsOf(*this));
}

void VembrixSpaceRowView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (state_.background) {
    paintMenuHighlight(painter, rect(), kMenuHighlightInset,
                       nativeColor(*state_.background, appearance_));
  }
  paintDot(painter);
  if (state_.isEditing) {
    paintFocusRing(painter);
  } else {
    paintLabel(painter);
  }
}

void VembrixSpaceRowView::paintDot(QPainter& painter) const {
  const QPointF topLeft = flipped(layoutOf(*this).dot, *this).topLeft();
  for (const DotImage::Oval& oval : content_.dot.ovals) {
    const double down = content_.dot.size.height - oval.rect.y - oval.rect.height;
    const QRectF rect(topLeft + QPointF(oval.rect.x, down),
                      QSizeF(oval.rect.width, oval.rect.height));
    painter.setPen(Qt::NoPen);
    painter.setBrush(oval.fill ? QBrush(nativeColor(*oval.fill, appearance_)) : QBrush());
    painter.drawEllipse(rect);
    if (!oval.stroke) continue;
    painter.setPen(QPen(nativeColor(*oval.stroke, appearance_), oval.lineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(rect);
  }
}

void VembrixSpaceRowView::paintLabel(QPainter& painter) const {
  const Rect frame = layoutOf(*this).label;
  const QFontMetricsF metrics(font());
  const double baseline = middleBaseline(font(), height(), painter.device()->devicePixelRatio());
  painter.setPen(nativeColor(Color(SystemColor::Label), appearance_));
  painter.setFont(font());
  const QString text = metrics.elidedText(lineOf(state_.label), Qt::ElideRight, frame.width);
  // Placed by its baseline: characters of another font may be higher and must not move the others.
  // Names in right-to-left scripts begin beside the dot, too.
  drawLine(painter, QPointF(frame.x, baseline), text);
}

void VembrixSpaceRowView::paintFocusRing(QPainter& painter) const {
  QColor ring = nativeColor(Color(SystemColor::ControlAccent), appearance_);
  ring.setAlphaF(0.5F);
  constexpr double kHalf = kFocusRingWidth / 2;
  painter.setPen(QPen(ring, kFocusRingWidth));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(editField_->geometry()).adjusted(-kHalf, -kHalf, kHalf, kHalf), 2,
                          2);
}

}  // namespace vembrix
