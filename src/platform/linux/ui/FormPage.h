#pragma once

#include <QSize>
#include <QWidget>
#include <string_view>
#include <vector>

#include "platform/SettingsForm.h"
#include "platform/linux/ui/FormControls.h"

namespace vembrix {

/// The rows of a form, laid out for the page's width. Main thread.
class FormPage : public QWidget {
  Q_OBJECT

 public:
  explicit FormPage(const SettingsForm& form);

  /// Changes the status label of that id, if the page has it.
  void setStatus(const ControlID& id, std::string_view text);
  void setEnabled(const ControlID& id, bool isEnabled);

  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  static constexpr int kUnmeasured = -1;

  struct Row {
    /// Has no widget in a row of one control.
    BuiltControl label;
    BuiltControl control;
    bool fillsRow = false;
    std::optional<double> controlWidth;
    RowAlignment alignment = RowAlignment::FirstBaseline;
    double topPadding = 0;
    /// Cached size of the control for that width, as measuring text is costly.
    mutable int measuredRoom = kUnmeasured;
    mutable QSize measured{};
  };
  enum class Placing { Measure, Place };

  void add(const ControlRow& row);
  void add(const FullRow& row);
  /// Gives a control whose text has changed its new width.
  void fit(const QWidget& control);
  void keepID(const FormControl& control, QWidget* widget);
  /// Lays out all rows; returns the page's height.
  int layOut(int width, Placing placing) const;
  /// Lays out a row; returns its height.
  int layOutRow(const Row& row, int top, int width, Placing placing) const;
  /// Returns the control's size if it may be as wide as `room`.
  [[nodiscard]] static QSize controlSize(const Row& row, int room);
  [[nodiscard]] static QSize measure(const Row& row, int room);
  [[nodiscard]] int labelColumnWidth() const;

  std::vector<Row> rows_;
  std::vector<std::pair<ControlID, QWidget*>> named_;
};

}  // namespace vembrix
