#include "platform/linux/ui/PlainView.h"

#include <QPainter>
#include <cmath>

#include "platform/linux/support/PixelGrid.h"
#include "platform/linux/ui/FormPage.h"
#include "platform/linux/ui/ScrollingPage.h"
#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/SegmentedTabBar.h"

namespace vembrix {
namespace {

constexpr double kPaneRadius = 6;

}  // namespace

PlainView::PlainView(const PlainContent& content, QWidget* parent)
    : QWidget(parent),
      inset_(static_cast<int>(std::lround(content.inset))),
      tabs_(new SegmentedTabBar(this)) {
  for (const SettingsTab& tab : content.tabs) {
    tabs_->addTab(QString::fromStdString(tab.label));
    forms_.push_back(tab.form);
  }
  pages_.resize(forms_.size());
  if (content.selected < content.tabs.size()) {
    tabs_->setCurrentIndex(static_cast<int>(content.selected));
  }
  connect(tabs_, &QTabBar::currentChanged, this, &PlainView::showPage);
  showPage(tabs_->currentIndex());
}

std::vector<FormPage*> PlainView::pages() {
  std::vector<FormPage*> pages;
  pages.reserve(pages_.size());
  for (std::size_t i = 0; i < pages_.size(); ++i) pages.push_back(&page(i).page());
  return pages;
}

ScrollingPage& PlainView::page(std::size_t index) {
  ScrollingPage*& page = pages_[index];
  if (page) return *page;
  page = new ScrollingPage(new FormPage(forms_[index]));
  page->setParent(this);
  page->setGeometry(room());
  page->hide();
  return *page;
}

void PlainView::showPage(int index) {
  for (ScrollingPage* other : pages_) {
    if (other) other->hide();
  }
  if (index >= 0) page(static_cast<std::size_t>(index)).show();
}

QRect PlainView::pane() const {
  // The segments overlap its upper edge.
  return rect().adjusted(inset_, inset_ + tabs_->naturalHeight() / 2, -inset_, -inset_);
}

QRect PlainView::room() const {
  return pane().adjusted(1, tabs_->naturalHeight() / 2 + 1, -1, -1);
}

void PlainView::resizeEvent(QResizeEvent* /*event*/) {
  const QSize tabs = tabs_->sizeHint();
  tabs_->setGeometry((width() - tabs.width()) / 2, inset_, tabs.width(), tabs_->naturalHeight());
  for (ScrollingPage* page : pages_) {
    if (page) page->setGeometry(room());
  }
}

void PlainView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool isDark = appearanceOf(palette()) == Appearance::Dark;
  painter.setBrush(isDark ? QColor(255, 255, 255, 9) : QColor(0, 0, 0, 9));
  const double width = pointLine(painter);
  const double inset = width / 2;
  painter.setPen(QPen(isDark ? QColor(255, 255, 255, 22) : QColor(0, 0, 0, 22), width));
  painter.drawRoundedRect(onPixels(painter, pane()).adjusted(inset, inset, -inset, -inset),
                          kPaneRadius, kPaneRadius);
}

}  // namespace vembrix
