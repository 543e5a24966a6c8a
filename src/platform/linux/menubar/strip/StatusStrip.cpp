#include "platform/linux/menubar/strip/StatusStrip.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/Application.h"
#include "platform/linux/menubar/strip/MenuPalette.h"
#include "platform/linux/menubar/strip/StripPlaces.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/support/ScreenCoordinates.h"
#include "platform/linux/x11/QtEwmh.h"
#include "platform/linux/x11/WindowHints.h"
#include "platform/linux/x11/X11Desktop.h"

namespace vembrix {
namespace {

/// After so many attempts the window manager's own place is accepted.
constexpr int kMaxReturns = 3;

QMargins thicknessOf(const Strut& strut) {
  const auto pixels = [&](std::size_t edge) { return static_cast<int>(strut[edge]); };
  return {pixels(0), pixels(2), pixels(1), pixels(3)};
}

}  // namespace

StatusStrip::StatusStrip(std::function<void()> clicked)
    : button_(this, {.moved = [this](const QPoint& corner) { drag(corner); },
                     .dropped = [this] { drop(); }}) {
  setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
  setAttribute(Qt::WA_ShowWithoutActivating);
  // Every pixel is painted each time.
  setAttribute(Qt::WA_OpaquePaintEvent);
  setWindowRole(QStringLiteral("status-item"));
  connect(&button_, &QAbstractButton::clicked, this, std::move(clicked));
  followPanels();
  updateSurroundings();
  makeWindow();
  followScreens();
  themeObservation_ = NotificationCenter::distributed().addObserver(
      notification::kInterfaceThemeChanged, [this] { draw(size()); });
}

StatusStrip::~StatusStrip() = default;

void StatusStrip::setContent(const StatusItemContent& content) {
  if (content == button_.label().content() && button_.width() == button_.sizeHint().width()) return;
  button_.setContent(content);
  // Reports of the window's new name and size would wake the program.
  mute(true);
  const bool wasInPlace = geometry() == target_;
  const QSize former = size();
  updateName();
  arrange();
  const bool isResized = isVisible() && size() != former;
  const bool isAwaited = isResized && picture_ && guard_ && guard_->awaitSize(wasInPlace);
  if (!isAwaited) mute(false);
}

void StatusStrip::mute(bool isMuted) {
  if (picture_) picture_->mute(isMuted);
}

void StatusStrip::updateName() {
  // A widget's title would replace "[*]" in the text.
  const QString name = button_.label().name();
  if (std::exchange(name_, name) == name) return;
  setName(*windowHandle(), name);
}

// The window

void StatusStrip::makeWindow() {
  // Creates the native window, so that its hints are set before it is shown.
  const auto id = static_cast<xcb_window_t>(winId());
  makeDock(*windowHandle());
  drawByServer(id);
  strut_.reset();
  if (guard_) guard_->watch(id);
  if (panels_) panels_->leaveOut(id);
  name_ = QString();
  updateName();
}

void StatusStrip::drawByServer(xcb_window_t window) {
  if (picture_) {
    picture_->setWindow(window);
  } else {
    picture_ = StripPicture::create(window);
  }
  if (!picture_) return;
  // Qt then paints neither by itself nor when a part of the window is uncovered.
  setUpdatesEnabled(false);
  windowHandle()->installEventFilter(this);
}

bool StatusStrip::eventFilter(QObject* object, QEvent* event) {
  const bool isPainting = event->type() == QEvent::Expose || event->type() == QEvent::Paint;
  return (isPainting && object == windowHandle()) || QWidget::eventFilter(object, event);
}

void StatusStrip::remakeWindow() {
  hide();
  destroy();
  target_ = {};
  isStretched_ = false;
  makeWindow();
  arrange();
}

void StatusStrip::closeEvent(QCloseEvent* event) {
  // Only the program ends the status item: requests of other programs to close it are ignored.
  if (event->spontaneous()) event->ignore();
}

void StatusStrip::followPanels() {
  X11Desktop* desktop = chosenDesktop().x11;
  if (!ewmhOfQt()) return;
  guard_ = std::make_unique<StripGuard>(
      StripGuard::Handlers{.repair =
                               [this] {
                                 restoreDock(*windowHandle());
                                 strut_.reset();
                                 reserve();
                               },
                           .remake = [this] { remakeWindow(); },
                           .settled =
                               [this] {
                                 returnToPlace();
                                 giveWay();
                               },
                           .requestedFrame = [this] { return pixelsOfGeometry(target_); },
                           .sized = [this] { mute(false); }});
  if (!desktop) return;
  panels_ = std::make_unique<X11Panels>(
      desktop->events(),
      X11Panels::Handlers{
          .changed =
              [this] {
                updateSurroundings();
                arrange();
              },
          .restacked = [this] { raiseOverPanel(); },
          .fullScreenChanged = [this](bool isFullScreen) { isFullScreen ? lower() : raise(); },
          .windowManagerChanged = [this] { guard_->checkSoon(); }});
}

void StatusStrip::followScreens() {
  const auto changed = [this] {
    if (panels_) panels_->refresh();
    updateSurroundings();
    arrange();
  };
  const auto follow = [this, changed](QScreen* screen) {
    connect(screen, &QScreen::geometryChanged, this, changed);
  };
  connect(qGuiApp, &QGuiApplication::screenAdded, this, [follow, changed](QScreen* screen) {
    follow(screen);
    changed();
  });
  connect(qGuiApp, &QGuiApplication::screenRemoved, this, changed);
  connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, changed);
  for (QScreen* screen : QGuiApplication::screens()) follow(screen);
}

// Its place

void StatusStrip::updateSurroundings() {
  surroundings_ = {};
  QRect whole;
  for (const QScreen* screen : QGuiApplication::screens()) {
    surroundings_.monitors.push_back(nativeGeometry(*screen));
    whole |= surroundings_.monitors.back();
  }
  if (!panels_) return;
  for (const DockFacts& dock : panels_->docks()) {
    const auto areas = panelAreas(dock, surroundings_.monitors);
    surroundings_.panels.insert(surroundings_.panels.end(), areas.begin(), areas.end());
  }
  if (std::exchange(workArea_, panels_->workArea()) != panels_->workArea()) {
    const QMargins own = thicknessOf(strut_.value_or(Strut{})) | thicknessOf(formerStrut_);
    windowManagerPanels_ = workArea_ ? windowManagerPanels(windowManagerPanels_, *workArea_, whole,
                                                           reservedByDocks(panels_->docks()), own)
                                     : QMargins();
  }
  const auto areas = edgeAreas(windowManagerPanels_, whole);
  surroundings_.panels.insert(surroundings_.panels.end(), areas.begin(), areas.end());
}

void StatusStrip::arrange() {
  arrange(isDragged_ ? dragged_ : storedStripPlace(monitorLayout(surroundings_.monitors)));
}

void StatusStrip::arrange(const std::optional<StripPlace>& place) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  // Waits until position and width are known.
  if (!screen || (panels_ && !panels_->isKnown()) ||
      button_.label().content() == StatusItemContent()) {
    return;
  }
  position_ = stripPosition(surroundings_, button_.sizeHint() * screen->devicePixelRatio(), place);
  const QRect target = geometryOfPixels(position_.geometry);
  moveTo(target);
  if (!isDragged_) reserve();
  if (panels_) panels_->followStacking(position_.isOnPanel);
  if (!isVisible()) {
    show();
    if (guard_) guard_->expectMapping();
  }
  if (position_.isOnPanel) raise();
}

void StatusStrip::moveTo(const QRect& target) {
  const QRect former = std::exchange(target_, target);
  if (former != target) {
    returns_ = 0;
    // Window managers that stretch docks ignore the requested position along the edge and do not
    // report that.
    const bool isAlong = former.top() == target.top() && former.height() == target.height();
    if (!isStretched_ || !isAlong) {
      draw(target.size());
      setGeometry(target);
    }
  }
  placeButton();
  draw(size());
}

void StatusStrip::reserve() {
  const Strut strut = strutOf(position_, surroundings_.monitors);
  if (strut_ && servesAs(strut, *strut_)) return;
  formerStrut_ = strut_.value_or(Strut{});
  strut_ = strut;
  // The guard counts the reports of its own struts.
  mute(false);
  setStrut(*windowHandle(), strut);
  if (guard_) guard_->expectStrut(strut);
}

void StatusStrip::giveWay() {
  if (panels_) panels_->followFullScreen(!isManaged(*windowHandle()));
}

void StatusStrip::raiseOverPanel() {
  if (position_.isOnPanel && panels_->isBelowPanel(position_.geometry)) raise();
}

QRect StatusStrip::itemIn(const QSize& strip) const {
  const int width = target_.isEmpty() ? button_.sizeHint().width() : target_.width();
  const int offset = isStretched_ ? target_.x() - leftEnd_ : 0;
  return {std::clamp(offset, 0, std::max(strip.width() - width, 0)), 0, width, strip.height()};
}

void StatusStrip::placeButton() {
  button_.setGeometry(itemIn(size()));
}

void StatusStrip::noteGeometry() {
  updateStretch();
  draw(size());
  if (guard_ && isVisible() && geometry() != target_) guard_->checkSoon();
}

void StatusStrip::updateStretch() {
  isStretched_ = !target_.isEmpty() && geometry().width() > target_.width();
  // Queried, as a window manager that stretches a dock need not report its position.
  if (isStretched_) leftEnd_ = geometryOfPixels({originInPixels(*windowHandle()), QSize(1, 1)}).x();
  placeButton();
}

void StatusStrip::returnToPlace() {
  updateStretch();
  if (geometry() == target_ || isStretched_ || isDragged_ || returns_ == kMaxReturns) return;
  returns_ += 1;
  setGeometry(target_);
}

void StatusStrip::moveEvent(QMoveEvent* /*event*/) {
  noteGeometry();
}

void StatusStrip::resizeEvent(QResizeEvent* /*event*/) {
  noteGeometry();
}

void StatusStrip::paintEvent(QPaintEvent* /*event*/) {
  const Appearance appearance = systemAppearance();
  QPainter(this).fillRect(rect(), menuBarColor(appearance));
}

void StatusStrip::draw(const QSize& size) {
  if (!picture_) {
    update();
    button_.update();
    return;
  }
  // The first position is not known yet.
  if (target_.isEmpty()) return;
  const StripPicture::Frame frame{.size = pixelsOfGeometry({target_.topLeft(), size}).size(),
                                  .item = itemIn(size),
                                  .scale = devicePixelRatioF(),
                                  .appearance = systemAppearance()};
  const bool isResizing = isVisible() && size != this->size();
  picture_->show(button_.label().content(), frame,
                 isResizing ? StripPicture::Shows::WithNewSize : StripPicture::Shows::Now,
                 [&] { return picture(frame); });
}

QImage StatusStrip::picture(const StripPicture::Frame& frame) {
  QImage image(frame.size, QImage::Format_RGB32);
  image.setDevicePixelRatio(frame.scale);
  image.fill(menuBarColor(frame.appearance));
  QPainter painter(&image);
  painter.setClipRect(frame.item);
  painter.translate(frame.item.topLeft());
  button_.paint(painter, frame.item.height());
  return image;
}

// Dragging

void StatusStrip::drag(const QPoint& corner) {
  isDragged_ = true;
  const QRect strip(corner, button_.sizeHint());
  dragged_ = placeOfDrop(surroundings_, pixelsOfGeometry(strip));
  arrange();
}

void StatusStrip::drop() {
  isDragged_ = false;
  storeStripPlace(monitorLayout(surroundings_.monitors), dragged_);
  arrange();
}

}  // namespace vembrix
