#include "platform/linux/ui/PlainView.h"

#include <QPainter>
#include <cmath>

#include "platform/linux/ui/ColorFollower.h"
#include "platform/linux/ui/FormPage.h"
#include "platform/linux/ui/ScrollingPage.h"
#include "platform/linux/ui/SegmentedTabBar.h"

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
    auto* page = new ScrollingPage(new FormPage(tab.form));
    page->setParent(this);
    page->hide();
    pages_.push_back(page);
  }
  if (content.selected < content.tabs.size()) {
    tabs_->setCurrentIndex(static_cast<int>(content.selected));
  }
  connect(tabs_, &QTabBar::currentChanged, this, &PlainView::showPage);
  showPage(tabs_->currentIndex());
}

std::vector<FormPage*> PlainView::pages() const {
  std::vector<FormPage*> pages;
  pages.reserve(pages_.size());
  for (const ScrollingPage* page : pages_) pages.push_back(&page->page());
  return pages;
}

void PlainView::showPage(int index) {
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    pages_[i]->setVisible(static_cast<int>(i) == index);
  }
}

QRect PlainView::pane() const {
  // The segments stand on its upper edge.
  return rect().adjusted(inset_, inset_ + SegmentedTabBar::kHeight / 2, -inset_, -inset_);
}

void PlainView::resizeEvent(QResizeEvent* /*event*/) {
  const QSize tabs = tabs_->sizeHint();
  tabs_->setGeometry((width() - tabs.width()) / 2, inset_, tabs.width(), SegmentedTabBar::kHeight);
  const QRect room = pane().adjusted(1, SegmentedTabBar::kHeight / 2 + 1, -1, -1);
  for (ScrollingPage* page : pages_) page->setGeometry(room);
}

void PlainView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool isDark = appearanceOf(palette()) == Appearance::Dark;
  painter.setBrush(isDark ? QColor(255, 255, 255, 9) : QColor(0, 0, 0, 9));
  painter.setPen(QPen(isDark ? QColor(255, 255, 255, 22) : QColor(0, 0, 0, 22), 1));
  painter.drawRoundedRect(QRectF(pane()).adjusted(0.5, 0.5, -0.5, -0.5), kPaneRadius, kPaneRadius);
}

}  // namespace vembrix
