#pragma once

#include <QMargins>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "platform/NotificationCenter.h"
#include "platform/linux/menubar/strip/StatusButton.h"
#include "platform/linux/menubar/strip/StripGuard.h"
#include "platform/linux/menubar/strip/StripPicture.h"
#include "platform/linux/menubar/strip/StripPlacement.h"
#include "platform/linux/menubar/strip/X11Panels.h"

namespace vembrix {

/// The piece of menu bar that holds the status item: a dock window on all desktops, as wide as the
/// item, in a free place at the top right of the primary screen, or where the user has dragged it.
/// Undoes other programs' changes to it. Main thread.
class StatusStrip : public QWidget {
 public:
  /// `clicked` is called for each click on the item, also by an assistive program.
  explicit StatusStrip(std::function<void()> clicked);
  ~StatusStrip() override;

  void setContent(const StatusItemContent& content);

  /// The item; the strip may be longer.
  [[nodiscard]] StatusButton& button() { return button_; }
  /// The item's frame on the screen.
  [[nodiscard]] const QRect& itemGeometry() const { return target_; }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void followScreens();
  void followPanels();
  void makeWindow();
  void remakeWindow();
  /// Lets the X server draw the window where it can.
  void drawByServer(xcb_window_t window);
  void updateName();
  /// Where the X server draws, suppresses its reports of changed properties.
  void mute(bool isMuted);

  void updateSurroundings();
  /// Moves the strip to its place. Costs nothing where it is there already.
  void arrange();
  void arrange(const std::optional<StripPlace>& place);
  void moveTo(const QRect& target);
  void reserve();
  /// Returns the item's place in a strip of that size.
  [[nodiscard]] QRect itemIn(const QSize& strip) const;
  void placeButton();
  /// Draws the strip with its present content at that size.
  void draw(const QSize& size);
  [[nodiscard]] QImage picture(const StripPicture::Frame& frame);
  /// To be called when the window was moved or resized, by any program.
  void noteGeometry();
  void updateStretch();
  void returnToPlace();
  void raiseOverPanel();
  /// Follows full-screen windows to lower the strip below them, if no window manager does.
  void giveWay();

  void drag(const QPoint& corner);
  void drop();

  StatusButton button_;
  /// The window's name.
  QString name_;
  /// Null if Qt paints.
  std::unique_ptr<StripPicture> picture_;
  Observation themeObservation_;
  /// Null without X11.
  std::unique_ptr<X11Panels> panels_;
  std::unique_ptr<StripGuard> guard_;

  StripSurroundings surroundings_;
  /// The thickness of the window manager's built-in panels.
  QMargins windowManagerPanels_;
  std::optional<QRect> workArea_;
  StripPosition position_;
  /// The requested frame, in Qt's units.
  QRect target_;
  /// Number of times that the present frame had to be restored.
  int returns_ = 0;
  /// Whether the window manager has made the strip longer than requested.
  bool isStretched_ = false;
  /// The actual window's left end, in Qt's units.
  int leftEnd_ = 0;
  std::optional<Strut> strut_;
  /// The former strut, which windows may still keep clear of.
  Strut formerStrut_{};

  bool isDragged_ = false;
  std::optional<StripPlace> dragged_;
};

}  // namespace vembrix
