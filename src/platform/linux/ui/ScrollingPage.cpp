#include "platform/linux/ui/ScrollingPage.h"

#include <QScrollBar>
#include <algorithm>

#include "platform/linux/ui/FormPage.h"
#include "platform/linux/ui/controls/ControlStyle.h"

namespace vembrix {
namespace {

constexpr int kLineStep = 20;

}  // namespace

ScrollingPage::ScrollingPage(FormPage* page) : page_(page) {
  setStyle(&ControlStyle::shared());
  verticalScrollBar()->setStyle(&ControlStyle::shared());
  verticalScrollBar()->setSingleStep(kLineStep);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidget(page);
  for (QWidget* part : {static_cast<QWidget*>(this), viewport(), static_cast<QWidget*>(page)}) {
    part->setAutoFillBackground(false);
  }
  verticalScrollBar()->setAutoFillBackground(false);
}

void ScrollingPage::resizeEvent(QResizeEvent* event) {
  const int width = viewport()->width();
  page_->resize(width, std::max(page_->heightForWidth(width), viewport()->height()));
  QScrollArea::resizeEvent(event);
}

}  // namespace vembrix
