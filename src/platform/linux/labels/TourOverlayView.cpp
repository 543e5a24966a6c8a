#include "platform/linux/labels/TourOverlayView.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTimerEvent>
#include <algorithm>
#include <chrono>
#include <cmath>

#include "platform/linux/Conversions.h"
#include "platform/linux/labels/BareWindow.h"

namespace vembrix {
namespace {

// The spinner of macOS: petals, of which the leading one is the lightest.
constexpr int kPetals = 8;
constexpr std::chrono::milliseconds kTurn{1000};
constexpr std::chrono::milliseconds kStep{33};
constexpr double kFaintest = 0.18;
constexpr double kLightest = 0.85;
/// In parts of the spinner's size.
constexpr double kPetalLength = 0.28;
constexpr double kPetalWidth = 0.12;

}  // namespace

TourOverlayView::TourOverlayView(const TourOverlayContent& content)
    : content_(content),
      line_(QString::fromStdString(content.text)),
      font_(nativeFont(content.font)) {
  clock_.start();
}

void TourOverlayView::setVisible(bool visible) {
  if (!visible) {
    timer_.stop();
  } else if (!timer_.isActive()) {
    timer_.start(kStep.count(), this);
  }
}

void TourOverlayView::timerEvent(QTimerEvent* event) {
  if (event->timerId() == timer_.timerId()) panel_->update(spinner_);
}

void TourOverlayView::paint(QPainter& painter, const QRectF& panel, Backing backing) {
  fillPanel(painter, panel, content_.cornerRadius, nativeColor(content_.fill), backing);

  const QFontMetricsF metrics(font_);
  const double around = content_.spinnerSize + content_.spacing;
  const double room = std::max(panel.width() - 2 * content_.padding - around, 0.0);
  const QString text = metrics.elidedText(line_, Qt::ElideRight, room, Qt::TextSingleLine);
  const double width = around + metrics.size(Qt::TextSingleLine, text).width();
  const double left = panel.center().x() - width / 2;
  spinner_ = QRectF(left, panel.center().y() - content_.spinnerSize / 2, content_.spinnerSize,
                    content_.spinnerSize);
  paintSpinner(painter, spinner_);
  painter.setFont(font_);
  painter.setPen(nativeColor(content_.textColor));
  painter.drawText(QRectF(left + around, panel.y(), width - around + 1, panel.height()),
                   Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

void TourOverlayView::paintSpinner(QPainter& painter, const QRectF& area) const {
  const double size = area.width();
  const double turned =
      std::fmod(static_cast<double>(clock_.elapsed()) / static_cast<double>(kTurn.count()), 1.0);
  const QRectF petal(-size * kPetalWidth / 2, -size / 2, size * kPetalWidth, size * kPetalLength);
  painter.save();
  painter.translate(area.center());
  painter.setPen(Qt::NoPen);
  for (int i = 0; i < kPetals; ++i) {
    // The time since the light passed this petal, in turns.
    const double age = std::fmod(turned - static_cast<double>(i) / kPetals + 1, 1.0);
    painter.setBrush(QColor::fromRgbF(1, 1, 1, kLightest + (kFaintest - kLightest) * age));
    painter.drawRoundedRect(petal, petal.width() / 2, petal.width() / 2);
    painter.rotate(360.0 / kPetals);
  }
  painter.restore();
}

}  // namespace vembrix
