#include "platform/linux/ui/ThemedView.h"

#include <QLinearGradient>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/linux/Conversions.h"
#include "platform/linux/ui/FormPage.h"
#include "platform/linux/ui/ScrollingPage.h"
#include "platform/linux/ui/controls/CardView.h"
#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/PillTabButton.h"

namespace vembrix {
namespace {

int rounded(double length) {
  return static_cast<int>(std::lround(length));
}

struct BackdropPainter {
  QPainter& painter;
  QRectF rect;
  Appearance appearance = Appearance::Light;

  void operator()(std::monostate) const {}
  void operator()(const Color& color) const {
    painter.fillRect(rect, nativeColor(color, appearance));
  }
  void operator()(const GradientBackdrop& backdrop) const {
    if (backdrop.colors.empty()) return;
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    const auto last = static_cast<double>(backdrop.colors.size()) - 1;
    double place = 0;
    for (const Color& color : backdrop.colors) {
      gradient.setColorAt(last > 0 ? place / last : 0, nativeColor(color, appearance));
      place += 1;
    }
    painter.fillRect(rect, gradient);
  }
  void operator()(Material material) const {
    painter.fillRect(rect, nativeColor(groundOf(material, appearance), appearance));
  }
};

}  // namespace

ThemedView::ThemedView(const ThemedContent& content, const std::function<void(int)>& tabClicked,
                       QWidget* parent)
    : QWidget(parent), backdrop_(content.backdrop), navigation_(content.navigation) {
  int index = 0;
  for (const TabButton& look : content.page.buttons) {
    auto* button = new PillTabButton(look, navigation_.buttonWidth, this);
    connect(button, &QPushButton::clicked, this, [tabClicked, index] { tabClicked(index); });
    buttons_.push_back(button);
    index += 1;
  }
  if (content.card) card_ = new CardView(*content.card, this);
  showForm(content.page.tab.form);
}

void ThemedView::setPage(const ThemedPage& page) {
  for (std::size_t i = 0; i < std::min(buttons_.size(), page.buttons.size()); ++i) {
    buttons_[i]->setLook(page.buttons[i]);
  }
  layOutButtons();
  showForm(page.tab.form);
}

std::vector<FormPage*> ThemedView::pages() const {
  return {&page_->page()};
}

void ThemedView::showForm(const SettingsForm& form) {
  ScrollingPage* before = page_;
  page_ = new ScrollingPage(new FormPage(form));
  if (card_) {
    card_->setPage(page_);
    return;
  }
  if (before) {
    before->hide();
    before->deleteLater();
  }
  page_->setParent(this);
  page_->setGeometry(contentRect());
  page_->show();
}

QRect ThemedView::contentRect() const {
  const Insets& insets = navigation_.content;
  return rect().adjusted(rounded(insets.leading), rounded(insets.top), -rounded(insets.trailing),
                         -rounded(insets.bottom));
}

void ThemedView::layOutButtons() {
  const bool isRow = navigation_.axis == NavigationLayout::Axis::Horizontal;
  const int spacing = rounded(navigation_.spacing);
  int rowWidth = -spacing;
  for (const PillTabButton* button : buttons_) rowWidth += button->sizeHint().width() + spacing;
  const int centered = (width() - rowWidth) / 2;
  QPoint place(navigation_.leading ? rounded(*navigation_.leading) : centered,
               rounded(navigation_.top));
  for (PillTabButton* button : buttons_) {
    const QSize size = button->sizeHint();
    button->setGeometry({place, size});
    place += isRow ? QPoint(size.width() + spacing, 0) : QPoint(0, size.height() + spacing);
  }
}

void ThemedView::resizeEvent(QResizeEvent* /*event*/) {
  layOutButtons();
  QWidget* box = card_ ? static_cast<QWidget*>(card_) : page_;
  box->setGeometry(contentRect());
}

void ThemedView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Appearance appearance = appearanceOf(palette());
  std::visit(BackdropPainter{painter, rect(), appearance}, backdrop_);
  if (const auto& separator = navigation_.separator) {
    painter.fillRect(QRectF(separator->leading, 0, separator->width, height()),
                     nativeColor(separator->color, appearance));
  }
}

}  // namespace vembrix
