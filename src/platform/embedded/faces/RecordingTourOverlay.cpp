#include "platform/embedded/faces/RecordingTourOverlay.h"

#include <utility>

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

namespace vembrix {
namespace {

std::vector<RecordingTourOverlay::Window*>& existing() {
  static std::vector<RecordingTourOverlay::Window*> windows;
  return windows;
}

SpaceWindows& desktopWindows() {
  return EmbeddedDesktop::shared().windows();
}

}  // namespace

std::unique_ptr<TourOverlay> TourOverlay::create(const TourOverlayContent& content) {
  return std::make_unique<RecordingTourOverlay>(content);
}

const std::vector<RecordingTourOverlay::Window*>& RecordingTourOverlay::windows() {
  return existing();
}

void RecordingTourOverlay::show(Duration fade) {
  if (!window_) return;
  window_->alpha().set(0);
  window_->alpha().animate(1, fade);
  desktopWindows().orderFront(window_->number());
}

void RecordingTourOverlay::hide(Duration fade) {
  // The block keeps the window until the fade is over.
  if (auto window = std::exchange(window_, nullptr)) {
    window->alpha().animate(0, fade);
    EmbeddedMainQueue::shared().after(
        fade, [window = std::move(window)] { desktopWindows().orderOut(window->number()); });
  }
}

// The window

RecordingTourOverlay::Window::Window(const TourOverlayContent& content)
    : content_(content),
      number_(desktopWindows().add({.owner = "Vembrix",
                                    .frame = content.frame,
                                    .level = content.level,
                                    .collectionBehavior = content.collectionBehavior,
                                    .spaces = {}})) {
  existing().push_back(this);
}

RecordingTourOverlay::Window::~Window() {
  desktopWindows().remove(number_);
  std::erase(existing(), this);
}

bool RecordingTourOverlay::Window::isOrderedIn() const {
  return desktopWindows().find(number_)->isOrderedIn;
}

}  // namespace vembrix
