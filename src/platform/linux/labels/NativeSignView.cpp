#include "platform/linux/labels/NativeSignView.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "platform/linux/Conversions.h"
#include "platform/linux/labels/BareWindow.h"

namespace vembrix {

NativeSignView::NativeSignView(double cornerRadius, double padding)
    : cornerRadius_(cornerRadius), padding_(padding), nativeFont_(nativeFont(font_)) {}

void NativeSignView::setText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  line_ = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  panel_->setName(line_);
  setNeedsDisplay();
}

void NativeSignView::setFont(const Font& font) {
  if (font_ == font) return;
  font_ = font;
  nativeFont_ = nativeFont(font);
  setNeedsDisplay();
}

void NativeSignView::setLook(const SignLook& look) {
  if (look_ == look) return;
  look_ = look;
  setNeedsDisplay();
}

void NativeSignView::setNeedsDisplay() {
  panel_->update();
}

void NativeSignView::paint(QPainter& painter, const QRectF& panel, Backing backing) {
  fillPanel(painter, panel, cornerRadius_, nativeColor(look_.fill), backing);
  if (const double width = look_.borderWidth; width > 0) {
    QPainterPath rim;
    // On an opaque backing the corners are cut off later, through the middle of the rim's colour.
    const double outer = backing == Backing::Opaque ? 0 : cornerRadius_;
    rim.addRoundedRect(panel, outer, outer);
    const double inner = std::max(cornerRadius_ - width, 0.0);
    rim.addRoundedRect(panel.adjusted(width, width, -width, -width), inner, inner);
    painter.fillPath(rim, nativeColor(look_.rim));
  }
  paintText(painter, panel);
}

void NativeSignView::paintText(QPainter& painter, const QRectF& panel) const {
  const QRectF area = panel.adjusted(padding_, 0, -padding_, 0);
  const QFontMetricsF metrics(nativeFont_);
  // Names in right-to-left scripts end on the left, and are truncated there.
  painter.setLayoutDirection(Qt::LayoutDirectionAuto);
  painter.setFont(nativeFont_);
  painter.setPen(nativeColor(look_.textColor));
  painter.drawText(area, Qt::AlignCenter | Qt::TextSingleLine,
                   metrics.elidedText(line_, Qt::ElideRight, area.width(), Qt::TextSingleLine));
}

}  // namespace vembrix
