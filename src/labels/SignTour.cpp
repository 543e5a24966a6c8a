// The labels during the tour after launch, and the overlay that covers it.

#include "labels/SpaceSignWindowController.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

constexpr Size kOverlaySize{520, 96};
constexpr milliseconds kFadeIn{200};
constexpr milliseconds kFadeOut{250};

TourOverlayContent overlayContent(const Rect& screen) {
  return {.frame = centered(kOverlaySize, screen),
          .level = WindowLevel::Status,
          // The overlay is in every Space.
          .collectionBehavior = CanJoinAllSpaces | Stationary | IgnoresCycle,
          .fill = {0, 0, 0, 0.72},
          .cornerRadius = kOverlaySize.height / 2,
          .spinnerSize = 24,
          .text = "Initializing desktops, stand by",
          .font = {.weight = Font::Weight::Semibold, .size = 22},
          .textColor = kWhite,
          .spacing = 16,
          .padding = 28};
}

}  // namespace

void SpaceSignWindowController::tourWillStart() {
  isTouring_ = true;
  for (auto& [space, sign] : windows_) sign.window().setAlphaValue(0);
  showTourOverlay();
}

void SpaceSignWindowController::tourDidEnd() {
  isTouring_ = false;
  hideTourOverlay();
}

void SpaceSignWindowController::showTourOverlay() {
  if (tourOverlayWindow_) return;
  tourOverlayWindow_ = TourOverlay::create(overlayContent(signScreen().frame));
  tourOverlayWindow_->show(fadeTime(kFadeIn));
}

void SpaceSignWindowController::hideTourOverlay() {
  if (!tourOverlayWindow_) return;
  tourOverlayWindow_->hide(fadeTime(kFadeOut));
  tourOverlayWindow_.reset();
}

}  // namespace vembrix
