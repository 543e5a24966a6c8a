#pragma once

#include <QMargins>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "platform/NotificationCenter.h"
#include "platform/linux/X11Panels.h"
#include "platform/linux/menubar/StatusButton.h"
#include "platform/linux/menubar/StripGuard.h"
#include "platform/linux/menubar/StripPlacement.h"

namespace vembrix {

/// The piece of menu bar that holds the status item: a dock window on all desktops, as
/// wide as the item, at the top right of the primary screen where no panel stands, or
/// where the user has dragged it. What other programs do to it is undone. Main thread.
class StatusStrip : public QWidget {
 public:
  /// `clicked` is called for each click on the item, also by an assistive program.
  explicit StatusStrip(std::function<void()> clicked);
  ~StatusStrip() override;

  void setContent(const StatusItemContent& content);

  /// The item on the strip, which may be longer.
  [[nodiscard]] StatusButton& button() { return button_; }
  /// Where the item is on the screen.
  [[nodiscard]] const QRect& itemGeometry() const { return target_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void followScreens();
  void followPanels();
  void makeWindow();
  void remakeWindow();
  void updateName();

  void updateSurroundings();
  /// Puts the strip where it belongs. Costs nothing where it is there.
  void arrange();
  void arrange(const std::optional<StripPlace>& place);
  void moveTo(const QRect& target);
  void reserve();
  void placeButton();
  /// The window has another place or size, by whomever.
  void noteGeometry();
  void updateStretch();
  void returnToPlace();
  void raiseOverPanel();
  /// To full-screen windows, where no window manager sees to that.
  void giveWay();

  void drag(const QPoint& corner);
  void drop();

  StatusButton button_;
  Observation themeObservation_;
  /// Null without X11.
  std::unique_ptr<X11Panels> panels_;
  std::unique_ptr<StripGuard> guard_;

  StripSurroundings surroundings_;
  /// Thickness of what the window manager shows itself.
  QMargins windowManagerPanels_;
  std::optional<QRect> workArea_;
  StripPosition position_;
  /// As Qt counts; where the window has been told to be.
  QRect target_;
  /// How often in a row it had to be told.
  int returns_ = 0;
  /// The window manager has made it longer than it was to be.
  bool isStretched_ = false;
  /// Of the window that is; as Qt counts.
  int leftEnd_ = 0;
  std::optional<Strut> strut_;
  /// Of which windows may still keep clear.
  Strut formerStrut_{};

  bool isDragged_ = false;
  std::optional<StripPlace> dragged_;
};

}  // namespace vembrix
