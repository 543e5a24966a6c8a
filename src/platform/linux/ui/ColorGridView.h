#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "platform/SettingsForm.h"

namespace vembrix {

class ColorWell;
class LineLabel;

/// The names and wells of a colour grid. As high as it needs; names are cut off
/// where the width that it is given does not hold them. Main thread.
class ColorGridView : public QWidget {
  Q_OBJECT

 public:
  ColorGridView(ColorGrid grid, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Cell {
    LineLabel* name;
    ColorWell* well;
    /// Of the whole name.
    int width;
  };

  void addCell(int index, const ColorGrid::Well& well);
  void layOut();
  /// How wide the names in each column of pairs are to be where they have so much room.
  [[nodiscard]] std::array<int, form_metrics::kPairsPerRow> nameWidths(int room) const;
  /// Of the widest name in the first or second column of pairs.
  [[nodiscard]] int wholeNameWidth(int column) const;

  ColorGrid grid_;
  /// That of the highest name or well.
  int rowHeight_ = 0;
  std::vector<Cell> cells_;
};

}  // namespace vembrix
