#include "platform/linux/labels/PanelPlacement.h"

#include <QWindow>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/embedded/EmbeddedDesktop.h"
#include "platform/linux/ChosenDesktop.h"
#include "platform/linux/ClickThroughFrames.h"
#include "platform/linux/X11Desktop.h"
#include "platform/linux/X11WindowDesktops.h"

namespace vembrix {
namespace {

using SpaceID = WindowServer::SpaceID;

/// The window manager keeps the window on its desktop, and shows it there.
class X11Placement final : public PanelPlacement {
 public:
  X11Placement(QWindow& window, Options options)
      : id_(static_cast<xcb_window_t>(window.winId())), setShown_(std::move(options.setShown)) {
    desktops_.add(id_);
    ClickThroughFrames::shared().add(id_);
    setCollectionBehavior(options.collectionBehavior);
  }
  ~X11Placement() override {
    desktops_.remove(id_);
    ClickThroughFrames::shared().remove(id_);
  }
  X11Placement(const X11Placement&) = delete;
  X11Placement& operator=(const X11Placement&) = delete;

  WindowServer::WindowNumber number() const override { return id_; }
  void setFrame(const Rect& /*frame*/) override {}

  void setCollectionBehavior(std::uint64_t behavior) override {
    if ((behavior & CanJoinAllSpaces) != 0) desktops_.move(id_, X11WindowDesktops::kAll);
  }

  void orderFront() override {
    if (showing_) return;
    // A window is born in the active Space. Said before it is shown: it must not flash
    // up where it does not belong.
    const SpaceID active = chosenDesktop().x11->activeSpace();
    if (!desktops_.desktop(id_) && active != 0) {
      desktops_.move(id_, static_cast<std::uint32_t>(active - 1));
    }
    showing_ = MainQueue::main().schedule(Duration::zero(), [this] {
      desktops_.noteShown(id_);
      setShown_(true);
    });
  }

 private:
  X11WindowDesktops& desktops_ = X11WindowDesktops::shared();
  xcb_window_t id_;
  std::function<void(bool)> setShown_;
  /// Held from then on.
  WorkItem showing_;
};

/// The desktop in the process has no screen of its own: what is in its active Space
/// is shown on whatever screen there is.
class EmbeddedPlacement : public PanelPlacement {
 public:
  explicit EmbeddedPlacement(Options options)
      : number_(windows().add({.owner = "Vembrix",
                               .frame = options.frame,
                               .level = options.level,
                               .collectionBehavior = options.collectionBehavior,
                               .spaces = {}})),
        setShown_(std::move(options.setShown)) {
    observation_ = NotificationCenter::workspace().addObserver(notification::kActiveSpaceDidChange,
                                                               [this] { update(); });
  }
  ~EmbeddedPlacement() override { windows().remove(number_); }
  EmbeddedPlacement(const EmbeddedPlacement&) = delete;
  EmbeddedPlacement& operator=(const EmbeddedPlacement&) = delete;

  WindowServer::WindowNumber number() const override { return number_; }
  void setFrame(const Rect& frame) override { windows().find(number_)->frame = frame; }
  void setCollectionBehavior(std::uint64_t behavior) override {
    windows().find(number_)->collectionBehavior = behavior;
  }

  void orderFront() override {
    windows().orderFront(number_);
    updating_ = MainQueue::main().schedule(Duration::zero(), [this] { update(); });
  }

 private:
  static EmbeddedWindows& windows() { return EmbeddedDesktop::shared().windows(); }

  void update() {
    WindowServer& server = WindowServer::shared();
    const SpaceID active = server.CGSGetActiveSpace(server.CGSMainConnectionID());
    const auto spaces = windows().onScreen(std::array{active});
    setShown_(std::ranges::any_of(
        spaces, [&](const EmbeddedWindows::Window* window) { return window->number == number_; }));
  }

  WindowServer::WindowNumber number_;
  std::function<void(bool)> setShown_;
  Observation observation_;
  WorkItem updating_;
};

}  // namespace

std::unique_ptr<PanelPlacement> PanelPlacement::create(QWindow& window, Options options) {
  if (chosenDesktop().x11) return std::make_unique<X11Placement>(window, std::move(options));
  return std::make_unique<EmbeddedPlacement>(std::move(options));
}

}  // namespace vembrix
