#include "platform/TourOverlay.h"

#include <utility>

#include "platform/Application.h"
#include "platform/linux/labels/BareWindow.h"
#include "platform/linux/labels/TourOverlayView.h"

namespace vembrix {
namespace {

/// The window of the overlay. Outlives the overlay until it has faded out.
class OverlayWindow {
 public:
  explicit OverlayWindow(const TourOverlayContent& content)
      : view_(content),
        panel_({.frame = content.frame,
                .level = content.level,
                .collectionBehavior = content.collectionBehavior,
                .cornerRadius = content.cornerRadius,
                .role = QStringLiteral("tour-overlay")},
               view_) {
    view_.setPanel(panel_);
    panel_.setName(QString::fromStdString(content.text));
    panel_.alpha().set(0);
  }

  void show(Duration fade) {
    panel_.alpha().set(0);
    panel_.orderFront();
    panel_.alpha().animate(1, fade);
  }

  void fadeOut(Duration fade, std::function<void()> gone) {
    panel_.alpha().animate(0, fade, std::move(gone));
  }

 private:
  TourOverlayView view_;
  BareWindow panel_;
};

class QtTourOverlay : public TourOverlay {
 public:
  explicit QtTourOverlay(const TourOverlayContent& content)
      : window_(std::make_shared<OverlayWindow>(content)) {}

  void show(Duration fade) override {
    if (window_) window_->show(fade);
  }

  void hide(Duration fade) override {
    const auto window = std::exchange(window_, nullptr);
    if (!window) return;
    // Keeps the window until the fade has ended, and for one more turn of the queue, because the
    // window itself makes this call.
    window->fadeOut(fade, [window] { MainQueue::main().async([window] {}); });
  }

 private:
  std::shared_ptr<OverlayWindow> window_;
};

}  // namespace

std::unique_ptr<TourOverlay> TourOverlay::create(const TourOverlayContent& content) {
  // Qt's windows need an application.
  Application::shared();
  return std::make_unique<QtTourOverlay>(content);
}

}  // namespace vembrix
