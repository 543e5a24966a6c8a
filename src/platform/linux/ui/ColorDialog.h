#pragma once

#include <QColorDialog>
#include <QPoint>
#include <optional>
#include <vector>

namespace vembrix {

/// Qt's dialog for colours, with the fonts, controls and appearance of the settings window and
/// placed beside it. Deleted when it closes; the window is then active again. Main thread.
class ColorDialog : public QColorDialog {
  Q_OBJECT

 public:
  /// The dialog offers the `swatches` first, as many as it has places for. `well` owns the dialog.
  ColorDialog(const QColor& color, const std::vector<QColor>& swatches, QWidget& well);

  /// Shows it beside the well's window if the screen has room for it, and always so that the well
  /// stays visible. A window manager that puts dialogs over their windows is asked once more.
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
/// there is room, else where it does not cover the well. All in one coordinate system of points.
QPoint placeBeside(const QRect& window, const QRect& well, const QSize& dialog, const QRect& free);

}  // namespace vembrix
