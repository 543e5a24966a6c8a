#include "platform/linux/ui/SettingsContentView.h"

#include <QPainter>
#include <cmath>

#include "platform/linux/Conversions.h"
#include "platform/linux/ui/FormPage.h"
#include "platform/linux/ui/PlainView.h"
#include "platform/linux/ui/SettingsAccessibility.h"
#include "platform/linux/ui/ThemedView.h"
#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/FocusRing.h"

namespace vembrix {

SettingsContentView::SettingsContentView(const SettingsContent& content, double coveredTop,
                                         const std::function<void(int)>& tabClicked,
                                         QWidget* parent)
    : QWidget(parent),
      chrome_(content.chrome),
      coveredTop_(chrome_.hasFullSizeContent ? static_cast<int>(std::lround(coveredTop)) : 0) {
  describeSettingsControls();
  setFocusPolicy(Qt::ClickFocus);
  if (const auto* plain = std::get_if<PlainContent>(&content.body)) {
    plain_ = new PlainView(*plain, this);
  } else {
    themed_ = new ThemedView(std::get<ThemedContent>(content.body), tabClicked, this);
  }
  new FocusRing(this);
}

void SettingsContentView::setSystemAppearance(Appearance appearance) {
  setPalette(settingsPalette(chrome_.appearance.value_or(appearance)));
}

void SettingsContentView::setPage(const ThemedPage& page) {
  if (themed_) themed_->setPage(page);
}

void SettingsContentView::setStatus(const ControlID& id, std::string_view text) {
  for (FormPage* page : pages()) page->setStatus(id, text);
}

void SettingsContentView::setEnabled(const ControlID& id, bool isEnabled) {
  for (FormPage* page : pages()) page->setEnabled(id, isEnabled);
}

std::vector<FormPage*> SettingsContentView::pages() {
  return themed_ ? themed_->pages() : plain_->pages();
}

void SettingsContentView::resizeEvent(QResizeEvent* /*event*/) {
  QWidget* body = themed_ ? static_cast<QWidget*>(themed_) : plain_;
  body->setGeometry(rect().adjusted(0, -coveredTop_, 0, 0));
}

void SettingsContentView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), nativeColor(chrome_.background, appearanceOf(palette())));
}

}  // namespace vembrix
