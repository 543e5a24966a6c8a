#include "labels/Sign.h"

#include "labels/SignAppearance.h"
#include "settings/PreferencesStore.h"

namespace vembrix {
namespace {

/// In points.
constexpr double kCornerRadius = 40;
constexpr double kPadding = 40;

}  // namespace

Sign::Sign(std::string_view text, const Rect& frame)
    : window_(SignWindow::create({.frame = frame,
                                  .level = WindowLevel::Floating,
                                  .collectionBehavior = kSignBehavior,
                                  .cornerRadius = kCornerRadius,
                                  .padding = kPadding})) {
  setText(text);
  window_->setAlphaValue(0);
  prefsChanged();
}

void Sign::setHeat(double heat) {
  if (heat == heat_) return;
  heat_ = heat;
  applyHeat();
}

void Sign::prefsChanged() {
  window_->view().setFont(signFont(PreferencesStore::shared().signTextSize()));
  applyHeat();
}

void Sign::applyHeat() {
  window_->view().setLook(signLook(heat_, PreferencesStore::shared().heatPalette()));
}

}  // namespace vembrix
