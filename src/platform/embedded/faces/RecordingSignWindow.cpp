#include "platform/embedded/faces/RecordingSignWindow.h"

#include <algorithm>
#include <array>

#include "platform/embedded/desktop/EmbeddedDesktop.h"

namespace vembrix {
namespace {

std::vector<RecordingSignWindow*>& existing() {
  static std::vector<RecordingSignWindow*> windows;
  return windows;
}

SpaceWindows& desktopWindows() {
  return EmbeddedDesktop::shared().windows();
}

}  // namespace

std::unique_ptr<SignWindow> SignWindow::create(const Options& options) {
  return std::make_unique<RecordingSignWindow>(options);
}

// The view

void RecordingSignView::setText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  changeCount_ += 1;
}

void RecordingSignView::setFont(const Font& font) {
  if (font_ == font) return;
  font_ = font;
  changeCount_ += 1;
}

void RecordingSignView::setLook(const SignLook& look) {
  if (look_ == look) return;
  look_ = look;
  changeCount_ += 1;
}

// The window

const std::vector<RecordingSignWindow*>& RecordingSignWindow::all() {
  return existing();
}

std::vector<RecordingSignWindow*> RecordingSignWindow::inSpace(WindowServer::SpaceID space) {
  std::vector<RecordingSignWindow*> found;
  for (RecordingSignWindow* window : existing()) {
    const auto spaces = desktopWindows().spacesOf(std::array{window->number_}, {});
    if (std::ranges::find(spaces, space) != spaces.end()) found.push_back(window);
  }
  return found;
}

RecordingSignWindow::RecordingSignWindow(const Options& options)
    : options_(options),
      number_(desktopWindows().add({.owner = "Vembrix",
                                    .frame = options.frame,
                                    .level = options.level,
                                    .collectionBehavior = options.collectionBehavior,
                                    .spaces = {}})) {
  existing().push_back(this);
}

RecordingSignWindow::~RecordingSignWindow() {
  desktopWindows().remove(number_);
  std::erase(existing(), this);
}

Rect RecordingSignWindow::frame() const {
  return desktopWindows().find(number_)->frame;
}

void RecordingSignWindow::setFrame(const Rect& frame) {
  desktopWindows().find(number_)->frame = frame;
}

void RecordingSignWindow::setCollectionBehavior(std::uint64_t behavior) {
  desktopWindows().find(number_)->collectionBehavior = behavior;
}

std::uint64_t RecordingSignWindow::collectionBehavior() const {
  return desktopWindows().find(number_)->collectionBehavior;
}

bool RecordingSignWindow::isOrderedIn() const {
  return desktopWindows().find(number_)->isOrderedIn;
}

void RecordingSignWindow::setAlphaValue(double alpha) {
  alphaCount_ += 1;
  alpha_.set(alpha);
}

void RecordingSignWindow::animateAlphaValue(double alpha, Duration duration) {
  alphaCount_ += 1;
  alpha_.animate(alpha, duration);
}

void RecordingSignWindow::orderFront() {
  desktopWindows().orderFront(number_);
}

}  // namespace vembrix
