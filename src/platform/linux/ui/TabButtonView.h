#pragma once

#include <QPushButton>
#include <optional>

#include "platform/SettingsWindow.h"

namespace vembrix {

/// A themed tab button. Main thread.
class TabButtonView : public QPushButton {
  Q_OBJECT

 public:
  TabButtonView(const TabButton& look, std::optional<double> width, QWidget* parent);

  void setLook(const TabButton& look);
  [[nodiscard]] bool isSelected() const { return look_.isSelected; }
  /// Of the ring around it that shows where the keyboard is.
  [[nodiscard]] double ringRadius() const;

  /// As it is to be laid out.
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int ownWidth() const;

  TabButton look_;
  std::optional<double> width_;
};

}  // namespace vembrix
