#pragma once

#include <QComboBox>

#include "platform/SettingsForm.h"

namespace vembrix {

/// A pop-up button: its menu opens over it, with the chosen item in its place.
/// Main thread.
class PopupButton : public QComboBox {
  Q_OBJECT

 public:
  PopupButton(const Popup& popup, QWidget* parent);

  void showPopup() override;

 protected:
  // The wheel scrolls the page.
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace vembrix
