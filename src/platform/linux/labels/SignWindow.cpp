#include "platform/SignWindow.h"

#include "platform/Application.h"
#include "platform/linux/labels/BareWindow.h"
#include "platform/linux/labels/NativeSignView.h"

namespace vembrix {
namespace {

class QtSignWindow : public SignWindow {
 public:
  explicit QtSignWindow(const Options& options)
      : view_(options.cornerRadius, options.padding),
        panel_({.frame = options.frame,
                .level = options.level,
                .collectionBehavior = options.collectionBehavior,
                .cornerRadius = options.cornerRadius,
                .role = QStringLiteral("label")},
               view_) {
    view_.setPanel(panel_);
  }

  WindowServer::WindowNumber windowNumber() const override { return panel_.number(); }
  SignView& view() override { return view_; }
  Rect frame() const override { return panel_.frame(); }
  void setFrame(const Rect& frame) override { panel_.setFrame(frame); }
  void setCollectionBehavior(std::uint64_t behavior) override {
    panel_.setCollectionBehavior(behavior);
  }
  double alphaValue() const override { return panel_.alpha().value(); }
  void setAlphaValue(double alpha) override { panel_.alpha().set(alpha); }
  void animateAlphaValue(double alpha, Duration duration) override {
    panel_.alpha().animate(alpha, duration);
  }
  void orderFront() override { panel_.orderFront(); }

 private:
  NativeSignView view_;
  BareWindow panel_;
};

}  // namespace

std::unique_ptr<SignWindow> SignWindow::create(const Options& options) {
  // Qt's windows need an application.
  Application::shared();
  return std::make_unique<QtSignWindow>(options);
}

}  // namespace vembrix
