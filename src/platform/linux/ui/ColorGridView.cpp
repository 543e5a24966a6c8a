#include "platform/linux/ui/ColorGridView.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/linux/Conversions.h"
#include "platform/linux/ui/ColorWell.h"
#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/LineLabel.h"

namespace vembrix {
namespace {

using namespace form_metrics;

/// The width of everything in a row except the names.
constexpr int kAllButNames =
    static_cast<int>(kPairsPerRow * (kWellSize.width + kWellColumnSpacing) + kWellColumnSpacing +
                     kSecondPairPadding);

}  // namespace

ColorGridView::ColorGridView(ColorGrid grid, QWidget* parent)
    : QWidget(parent), grid_(std::move(grid)), rowHeight_(static_cast<int>(kWellSize.height)) {
  cells_.reserve(grid_.wells.size());
  int index = 0;
  for (const ColorGrid::Well& well : grid_.wells) addCell(index++, well);
}

void ColorGridView::addCell(int index, const ColorGrid::Well& well) {
  const QString name = QString::fromStdString(well.name);
  auto* label = new LineLabel(this);
  label->setTextFormat(Qt::PlainText);
  label->setFont(nativeFont(grid_.nameStyle.font));
  label->setText(name);
  followTextColor(*label, grid_.nameStyle.color);
  const auto changed = [this, index](const Color& color) {
    if (grid_.onChange) grid_.onChange(index, color);
  };
  auto* button = new ColorWell(name, well.color, changed, this);
  button->setSwatches([this] {
    std::vector<Color> colors;
    if (!grid_.swatches) return colors;
    for (ColorGrid::Well& swatch : grid_.swatches()) colors.push_back(swatch.color);
    return colors;
  });
  const QSize natural = label->sizeHint();
  cells_.push_back({label, button, natural.width()});
  rowHeight_ = std::max(rowHeight_, natural.height());
}

QSize ColorGridView::sizeHint() const {
  const auto pairs = static_cast<int>(cells_.size());
  if (pairs == 0) return {0, 0};
  const int rows = (pairs + kPairsPerRow - 1) / kPairsPerRow;
  const int spacing = static_cast<int>(kWellRowSpacing);
  return {kAllButNames + wholeNameWidth(0) + wholeNameWidth(1),
          rows * rowHeight_ + (rows - 1) * spacing};
}

void ColorGridView::resizeEvent(QResizeEvent* /*event*/) {
  layOut();
}

void ColorGridView::layOut() {
  const QSize wellSize(static_cast<int>(kWellSize.width), static_cast<int>(kWellSize.height));
  const int spacing = static_cast<int>(kWellColumnSpacing);
  const std::array<int, kPairsPerRow> names = nameWidths(std::max(width() - kAllButNames, 0));
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    const auto [row, column] = std::div(static_cast<int>(i), kPairsPerRow);
    const auto& [label, well, wholeWidth] = cells_[i];
    int x = column == 0
                ? 0
                : names[0] + wellSize.width() + 2 * spacing + static_cast<int>(kSecondPairPadding);
    const int y = row * (rowHeight_ + static_cast<int>(kWellRowSpacing));
    const int room = names[static_cast<std::size_t>(column)];
    const QFontMetricsF metrics(label->font());
    const QString name = well->accessibleName();
    const QString shown =
        wholeWidth <= room ? name : metrics.elidedText(name, Qt::ElideRight, room);
    label->setText(shown);
    label->setToolTip(shown == name ? QString() : name.toHtmlEscaped());
    const QSize natural = label->sizeHint();
    const QSize size(std::min(natural.width(), room), natural.height());
    label->setGeometry(x + room - size.width(), y + (rowHeight_ - size.height()) / 2, size.width(),
                       size.height());
    x += room + spacing;
    well->setGeometry(QRect({x, y + (rowHeight_ - wellSize.height()) / 2}, wellSize));
  }
}

std::array<int, kPairsPerRow> ColorGridView::nameWidths(int room) const {
  const std::array<int, kPairsPerRow> whole{wholeNameWidth(0), wholeNameWidth(1)};
  const int half = room / kPairsPerRow;
  // The width that a short name leaves goes to the longer one.
  return {std::min(whole[0], std::max(half, room - whole[1])),
          std::min(whole[1], std::max(half, room - whole[0]))};
}

int ColorGridView::wholeNameWidth(int column) const {
  int width = 0;
  for (std::size_t i = static_cast<std::size_t>(column); i < cells_.size(); i += kPairsPerRow) {
    width = std::max(width, cells_[i].width);
  }
  return width;
}

}  // namespace vembrix
