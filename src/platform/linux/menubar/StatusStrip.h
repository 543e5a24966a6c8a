#pragma once

#include <QWidget>
#include <functional>

#include "platform/NotificationCenter.h"
#include "platform/linux/menubar/StatusItemLabel.h"

namespace vembrix {

/// The piece of menu bar that holds the status item: a dock window at the top
/// right of the primary screen, on all desktops, above other windows, as wide
/// as the item. Main thread.
class StatusStrip : public QWidget {
 public:
  /// `pressed` is called for each press of a mouse button on the strip.
  explicit StatusStrip(std::function<void()> pressed);

  void setContent(const StatusItemContent& content);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void followScreens();
  void place();
  void updateName();

  std::function<void()> pressed_;
  StatusItemLabel label_;
  Observation themeObservation_;
};

}  // namespace vembrix
