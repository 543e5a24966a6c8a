#pragma once

#include <QPushButton>
#include <optional>

#include "platform/SettingsWindow.h"

namespace vembrix {

/// A themed tab button. Main thread.
class PillTabButton : public QPushButton {
  Q_OBJECT

 public:
  PillTabButton(const TabButton& look, std::optional<double> width, QWidget* parent);

  void setLook(const TabButton& look);
  [[nodiscard]] bool isSelected() const { return look_.isSelected; }
  /// The corner radius of the focus ring.
  [[nodiscard]] double ringRadius() const;

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int ownWidth() const;

  TabButton look_;
  std::optional<double> width_;
};

}  // namespace vembrix
