#pragma once

#include <QColorDialog>
#include <QPoint>
#include <optional>
#include <vector>

namespace vembrix {

/// Qt's dialog for colours as a part of the settings window: of its appearance, with its fonts and
/// controls, and beside it. Deleted when it closes; the window is active again then. Main thread.
class ColorDialog : public QColorDialog {
  Q_OBJECT

 public:
  /// The dialog offers the `swatches` first, as far as it has places. `well` owns it.
  ColorDialog(const QColor& color, const std::vector<QColor>& swatches, QWidget& well);

  /// Shows it beside the well's window where the screen has room for it, and in any case so that
  /// the well is seen. A window manager that puts dialogs over their windows is asked once more.
  void openBeside(const QWidget& well);

 protected:
  void changeEvent(QEvent* event) override;
  void done(int result) override;

 private:
  void takeOnControls();
  void arrangeParts();

  /// Until it has the keyboard for the first time.
  std::optional<QPoint> place_;
};

/// Returns the place of a dialog of that size in the free part of a screen: beside the window if
/// there is room, else where it leaves the well uncovered. In one coordinate system of points.
QPoint placeBeside(const QRect& window, const QRect& well, const QSize& dialog, const QRect& free);

}  // namespace vembrix
