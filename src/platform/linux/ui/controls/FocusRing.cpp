#include "platform/linux/ui/controls/FocusRing.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QPainter>
#include <QScrollArea>
#include <QStyleOptionButton>
#include <cmath>
#include <utility>

#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/ControlPainting.h"
#include "platform/linux/ui/controls/PillTabButton.h"
#include "platform/linux/ui/controls/SegmentedTabBar.h"
#include "platform/linux/ui/controls/SelectableLine.h"
#include "platform/linux/ui/controls/SliderControl.h"

namespace vembrix {
namespace {

using namespace control_metrics;

using Shape = FocusRing::Shape;

/// Returns the shape around which the ring is drawn, in the control's coordinates; empty for
/// controls without a ring.
Shape shapeOf(const QWidget& control) {
  const QRectF whole = control.rect();
  if (qobject_cast<const QCheckBox*>(&control)) {
    QStyleOptionButton option;
    option.initFrom(&control);
    const QStyle& style = *control.style();
    return {style.subElementRect(QStyle::SE_CheckBoxIndicator, &option, &control), kCheckboxRadius};
  }
  if (const auto* slider = qobject_cast<const SliderControl*>(&control)) {
    return {slider->knob(), kKnobSize / 2.0};
  }
  if (const auto* tab = qobject_cast<const PillTabButton*>(&control)) {
    return {whole, tab->ringRadius()};
  }
  if (const auto* tabs = qobject_cast<const SegmentedTabBar*>(&control)) {
    return {tabs->segment(tabs->currentIndex()), kButtonRadius};
  }
  if (const auto* line = qobject_cast<const SelectableLine*>(&control)) {
    return line->hasFrame() ? Shape{whole, kFieldRadius} : Shape{};
  }
  return {whole, kButtonRadius};
}

int outset() {
  return static_cast<int>(std::ceil(kFocusRingWidth)) + 1;
}

}  // namespace

FocusRing::FocusRing(QWidget* area) : QWidget(area), area_(*area) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget* /*old*/, QWidget* now) { follow(now); });
}

FocusRing::~FocusRing() = default;

void FocusRing::follow(QWidget* control) {
  for (const QPointer<QWidget>& widget : std::exchange(watched_, {})) {
    if (widget) widget->removeEventFilter(this);
  }
  const bool isOurs = control && control != &area_ && area_.isAncestorOf(control) &&
                      !shapeOf(*control).rect.isEmpty();
  control_ = isOurs ? control : nullptr;
  if (!control_) {
    // Owned by the area again, so that it is not destroyed with the page.
    setParent(&area_);
    hide();
    return;
  }
  QWidget* stage = stageOf(*control_);
  for (QWidget* widget = control_; widget != stage; widget = widget->parentWidget()) {
    widget->installEventFilter(this);
    watched_.emplace_back(widget);
  }
  setParent(stage);
  place();
  show();
  raise();
}

QWidget* FocusRing::stageOf(const QWidget& control) const {
  QWidget* stage = control.parentWidget();
  while (stage != &area_) {
    const QWidget* viewport = stage->parentWidget();
    const auto* scrolling = qobject_cast<const QScrollArea*>(viewport->parentWidget());
    if (scrolling && scrolling->widget() == stage) break;
    stage = stage->parentWidget();
  }
  return stage;
}

void FocusRing::place() {
  const int margin = outset();
  const QRect control(control_->mapTo(parentWidget(), QPoint()), control_->size());
  setGeometry(control.adjusted(-margin, -margin, margin, margin));
  update();
}

bool FocusRing::eventFilter(QObject* object, QEvent* event) {
  const bool isControl = object == control_;
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
      if (control_) place();
      break;
    case QEvent::Paint:
      // A slider's knob may have moved. Else the ring has been painted with the control; painting
      // it anew would paint the control below it anew, and so on.
      if (isControl && shapeOf(*control_) != drawn_) update();
      break;
    case QEvent::Hide:
    case QEvent::Destroy:
      if (isControl) follow(nullptr);
      break;
    default:
      break;
  }
  return QWidget::eventFilter(object, event);
}

void FocusRing::paintEvent(QPaintEvent* /*event*/) {
  if (!control_) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  drawn_ = shapeOf(*control_);
  paintFocusRing(painter, drawn_.rect.translated(outset(), outset()), drawn_.radius,
                 appearanceOf(palette()));
}

}  // namespace vembrix
