#include "platform/linux/labels/PanelStage.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/WindowServer.h"
#include "platform/linux/labels/BareWindow.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/session/Compositor.h"
#include "platform/portable/SpaceWindows.h"

namespace vembrix {
namespace {

/// The limit for the pictures that the X server keeps: about five labels of the usual size, which
/// users return to before their colours change.
constexpr std::int64_t kMaxBytes = std::int64_t{8} << 20;

}  // namespace

PanelStage& PanelStage::shared() {
  // Never destroyed: panels may outlive main().
  static auto& stage = *new PanelStage;
  return stage;
}

PanelStage::PanelStage() {
  chosenWindows().watch([this] { updateSoon(); });
  observation_ =
      NotificationCenter::workspace().addObserver(notification::kActiveSpaceDidChange, [this] {
        isSpaceNew_ = true;
        updateSoon();
      });
  connect(&Compositor::shared(), &Compositor::changed, this, [this] {
    for (BareWindow* panel : panels_) panel->update();
    updateSoon();
  });
}

void PanelStage::remove(BareWindow& panel) {
  std::erase(panels_, &panel);
  std::erase(shown_, &panel);
}

void PanelStage::updateSoon() {
  if (updating_) return;
  updating_ = MainQueue::main().schedule(Duration::zero(), [this] { update(); });
}

void PanelStage::update() {
  updating_.reset();
  WindowServer& server = WindowServer::shared();
  const auto active = server.CGSGetActiveSpace(server.CGSMainConnectionID());
  const SpaceWindows& windows = chosenWindows();
  const bool isSpaceNew = std::exchange(isSpaceNew_, false);
  for (BareWindow* panel : panels_) {
    const bool wasShown = panel->isShown();
    panel->setOnScreen(active != 0 && windows.isOnScreen(panel->number(), active));
    // Some window managers put their picture of the desktops in front at each switch. A panel that
    // comes up now is in front of it already.
    if (isSpaceNew && wasShown && panel->isShown()) {
      panel->raise();
      noteShown(*panel);
    }
  }
}

void PanelStage::noteShown(BareWindow& panel) {
  for (BareWindow* other : panels_) {
    if (other->level() > panel.level() && other->isShown()) other->raise();
  }
  std::erase(shown_, &panel);
  shown_.push_back(&panel);
  dropPictures();
}

void PanelStage::dropPictures() {
  std::int64_t bytes = 0;
  for (auto panel = shown_.rbegin(); panel != shown_.rend(); ++panel) {
    bytes += (*panel)->pictureBytes();
    if (bytes > kMaxBytes && !(*panel)->isShown()) (*panel)->dropWindow();
  }
  std::erase_if(shown_, [](const BareWindow* panel) { return panel->pictureBytes() == 0; });
}

}  // namespace vembrix
