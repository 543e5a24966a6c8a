#include "platform/linux/TextMetrics.h"

#include <QFontMetricsF>
#include <cmath>

namespace vembrix {

int lineHeight(const QFont& font) {
  const QFontMetricsF metrics(font);
  return static_cast<int>(std::ceil(metrics.ascent()) + std::ceil(metrics.descent()));
}

double middleBaseline(const QFont& font, double height, double scale) {
  return std::round((height + QFontMetricsF(font).capHeight()) / 2 * scale) / scale;
}

}  // namespace vembrix
