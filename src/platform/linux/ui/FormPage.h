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

  /// Changes the status label of that id, where the page has it.
  void setStatus(const ControlID& id, std::string_view text);
  void setEnabled(const ControlID& id, bool isEnabled);

  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Row {
    /// Has no widget in a row of one control.
    BuiltControl label;
    BuiltControl control;
    std::optional<double> controlWidth;
    RowAlignment alignment = RowAlignment::FirstBaseline;
    double topPadding = 0;
    /// Cached size of the control for that width, as measuring text is costly.
    mutable int measuredRoom = -1;
    mutable QSize measured{};
  };
  enum class Placing { Measure, Place };

  void add(const ControlRow& row);
  void add(const FullRow& row);
  void keepID(const FormControl& control, QWidget* widget);
  /// The page's height.
  int layOut(int width, Placing placing) const;
  /// The row's height.
  int layOutRow(const Row& row, int top, int width, Placing placing) const;
  [[nodiscard]] static QSize controlSize(const Row& row, int room);
  [[nodiscard]] int labelColumnWidth() const;

  std::vector<Row> rows_;
  std::vector<std::pair<ControlID, QWidget*>> named_;
};

}  // namespace vembrix
