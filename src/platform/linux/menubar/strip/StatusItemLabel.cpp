#include "platform/linux/menubar/strip/StatusItemLabel.h"

#include <QPaintDevice>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <string>
#include <variant>

#include "platform/linux/Conversions.h"
#include "platform/linux/TextMetrics.h"
#include "platform/linux/menubar/strip/MenuPalette.h"
#include "platform/linux/support/PixelGrid.h"

namespace vembrix {
namespace {

/// The menu bar's padding on each side of a title.
constexpr double kPadding = 5;
/// More characters, and more points, than fit on any screen.
constexpr qsizetype kMaxTitleLength = 2048;
constexpr double kMaxWidth = 16384;
/// More than most people have desktops.
constexpr std::size_t kMaxWidths = 64;

const std::string* titleOf(const StatusItemContent& content) {
  if (const auto* plain = std::get_if<StatusItemContent::PlainTitle>(&content.label)) {
    return &plain->text;
  }
  if (const auto* attributed = std::get_if<StatusItemContent::AttributedTitle>(&content.label)) {
    return &attributed->text;
  }
  return nullptr;
}

/// The colour of the title or image.
QColor inkOf(const StatusItemContent& content, Appearance appearance) {
  if (const auto* attributed = std::get_if<StatusItemContent::AttributedTitle>(&content.label)) {
    return nativeColor(attributed->color, appearance);
  }
  return menuBarTextColor(appearance);
}

}  // namespace

StatusItemLabel::StatusItemLabel() {
  const QFont font = menuBarFont();
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  // Blanks around a name count.
  option.setFlags(QTextOption::IncludeTrailingSpaces);
  // The text determines its direction; its position is decided when it is painted.
  option.setTextDirection(Qt::LayoutDirectionAuto);
  option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
  title_.setFont(font);
  title_.setTextOption(option);
  title_.setCacheEnabled(true);
}

void StatusItemLabel::setContent(const StatusItemContent& content) {
  content_ = content;
  const std::string* title = titleOf(content_);
  setTitle(title ? QString::fromStdString(*title) : QString());
}

void StatusItemLabel::setTitle(const QString& text) {
  QString line = text.left(kMaxTitleLength);
  if (!line.isEmpty() && line.back().isHighSurrogate()) line.chop(1);
  // A title has one line.
  line.replace(QLatin1Char('\n'), QLatin1Char(' '));
  if (line == title_.text()) return;
  title_.setText(line);
  if (const auto known = widths_.find(line); known != widths_.end()) {
    titleWidth_ = known->second;
    return;
  }
  layOut();
  const QTextLine only = title_.lineCount() > 0 ? title_.lineAt(0) : QTextLine();
  titleWidth_ = only.isValid() ? only.naturalTextWidth() : 0;
  if (widths_.size() == kMaxWidths) widths_.clear();
  widths_.emplace(line, titleWidth_);
}

void StatusItemLabel::layOut() {
  title_.beginLayout();
  title_.createLine();
  title_.endLayout();
}

int StatusItemLabel::width() const {
  if (content_.length == StatusItemLength::square()) return kBarHeight;
  if (content_.length != StatusItemLength::variable()) {
    return static_cast<int>(std::lround(std::clamp(content_.length.points, 1.0, kMaxWidth)));
  }
  const auto* image = std::get_if<TemplateImage>(&content_.label);
  const double natural = image ? image->size.width : titleWidth_;
  return static_cast<int>(std::ceil(std::min(natural + 2 * kPadding, kMaxWidth)));
}

QString StatusItemLabel::name() const {
  const std::string* title = titleOf(content_);
  return title ? QString::fromStdString(*title).trimmed() : QStringLiteral("Vembrix");
}

void StatusItemLabel::paint(QPainter& painter, Appearance appearance) {
  painter.fillRect(0, 0, width(), kBarHeight, menuBarColor(appearance));
  painter.setRenderHint(QPainter::Antialiasing);
  if (content_.fill) {
    // The bar ends with the item, so it frames the fill evenly.
    const double rim = pointLine(painter);
    const QRectF bar = onPixels(painter, QRectF(0, 0, width(), kBarHeight));
    const QRectF button = bar.adjusted(rim, rim, -rim, -rim);
    painter.setPen(Qt::NoPen);
    painter.setBrush(nativeColor(*content_.fill, appearance));
    painter.drawRoundedRect(button, content_.cornerRadius, content_.cornerRadius);
    // A title that is too wide is cut there.
    painter.setClipRect(button.adjusted(0, -rim, 0, rim), Qt::IntersectClip);
  }
  const QColor ink = inkOf(content_, appearance);
  if (const auto* image = std::get_if<TemplateImage>(&content_.label)) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    paintImage(painter, *image);
  } else {
    painter.setPen(ink);
    paintTitle(painter);
  }
}

void StatusItemLabel::paintTitle(QPainter& painter) {
  if (title_.lineCount() == 0) layOut();
  if (title_.lineCount() == 0) return;
  const QTextLine line = title_.lineAt(0);
  double x = (width() - titleWidth_) / 2;
  if (x < 0) {
    // A title that is too wide is truncated where its text ends: in right-to-left scripts on the
    // left.
    x = title_.text().isRightToLeft() ? width() - titleWidth_ : 0;
  }
  // Centres capitals in the bar, on a whole row of pixels.
  const double baseline =
      middleBaseline(title_.font(), kBarHeight, painter.device()->devicePixelRatio());
  line.draw(&painter, {x, baseline - line.ascent()});
}

void StatusItemLabel::paintImage(QPainter& painter, const TemplateImage& image) const {
  const double left = (width() - image.size.width) / 2;
  const double bottom = (kBarHeight + image.size.height) / 2;
  for (const TemplateImage::RoundedRect& shape : image.shapes) {
    const Rect& rect = shape.rect;
    const QRectF flipped(left + rect.x, bottom - rect.y - rect.height, rect.width, rect.height);
    painter.drawRoundedRect(flipped, shape.radius, shape.radius);
  }
}

}  // namespace vembrix
