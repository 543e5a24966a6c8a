#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "platform/SettingsForm.h"

namespace vembrix {

class ColorWell;
class LineLabel;

/// The names and wells of a colour grid. Takes the height that it needs; truncates names that do
/// not fit. Main thread.
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
    /// The width of the whole name.
    int width;
  };

  void addCell(int index, const ColorGrid::Well& well);
  void layOut();
  /// Divides `room` among the names of the two columns of pairs; neither gets more than its whole
  /// width.
  [[nodiscard]] std::array<int, form_metrics::kPairsPerRow> nameWidths(int room) const;
  /// Returns the width of the widest name in the first or second column of pairs.
  [[nodiscard]] int wholeNameWidth(int column) const;

  ColorGrid grid_;
  /// The height of the highest name or well.
  int rowHeight_ = 0;
  std::vector<Cell> cells_;
};

}  // namespace vembrix
