#include "platform/linux/ui/controls/CheckboxButton.h"

#include <QFontMetrics>
#include <algorithm>

#include "platform/linux/ui/controls/ControlPainting.h"

namespace vembrix {

int CheckboxButton::heightForWidth(int width) const {
  const QSize natural = sizeHint();
  if (width >= natural.width()) return natural.height();
  const QFontMetrics metrics(font());
  const int room = width - control_metrics::kCheckboxSize - control_metrics::kCheckboxSpacing;
  const QRect lines = metrics.boundingRect(QRect(0, 0, room, QWIDGETSIZE_MAX),
                                           Qt::TextWordWrap | Qt::TextShowMnemonic, text());
  // The first line is centred in the height that a single line needs.
  const int above = centeredBaseline(font(), natural.height()) - metrics.ascent();
  return std::max(above, 0) + lines.height();
}

}  // namespace vembrix
