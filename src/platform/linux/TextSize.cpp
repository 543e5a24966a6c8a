#include "platform/TextSize.h"

#include <QFontMetricsF>
#include <QString>

#include "platform/Application.h"
#include "platform/linux/Conversions.h"

namespace vembrix {

Size textSize(std::string_view text, const Font& font) {
  // Qt knows its fonts only once there is an application.
  Application::shared();
  const QFontMetricsF metrics(nativeFont(font));
  const QString line = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  return {metrics.size(Qt::TextSingleLine, line).width(), metrics.height()};
}

}  // namespace vembrix
