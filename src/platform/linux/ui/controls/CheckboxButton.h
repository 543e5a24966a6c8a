#pragma once

#include <QCheckBox>

namespace vembrix {

/// A check box whose title wraps if the page is too narrow. Main thread.
class CheckboxButton : public QCheckBox {
  Q_OBJECT

 public:
  using QCheckBox::QCheckBox;

  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;
};

}  // namespace vembrix
