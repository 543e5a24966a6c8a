#include "platform/SpaceRowView.h"

#include <QPointer>
#include <utility>

#include "platform/linux/menubar/NativeSpaceRowView.h"
#include "platform/linux/menubar/VembrixSpaceRowView.h"

namespace vembrix {
namespace {

/// Owns the handler and the content of the row; the menu's item owns the widget.
class QtSpaceRowView : public NativeSpaceRowView {
 public:
  QtSpaceRowView(SpaceRowContent content, SpaceRowState state,
                 std::unique_ptr<SpaceRowHandler> handler)
      : content_(std::move(content)), state_(std::move(state)), handler_(std::move(handler)) {
    handler_->attach(*this);
  }

  VembrixSpaceRowView* makeWidget() override {
    widget_ = new VembrixSpaceRowView(content_, state_, *handler_);
    return widget_;
  }

  VembrixSpaceRowView* widget() const override { return widget_; }

  void setMenu(Menu menu) override { menu_ = std::move(menu); }

  void setState(const SpaceRowState& state) override {
    if (state == state_) return;
    const bool wasEditing = state_.isEditing;
    if (state.isEditing && !wasEditing && menu_.prepareEditing) menu_.prepareEditing();
    state_ = state;
    if (widget_) widget_->stateChanged(wasEditing);
  }

  std::string editedText() const override {
    return widget_ ? widget_->editedText().toStdString() : std::string();
  }

  void closeMenu() override {
    if (menu_.close) menu_.close();
  }

 private:
  SpaceRowContent content_;
  SpaceRowState state_;
  std::unique_ptr<SpaceRowHandler> handler_;
  Menu menu_;
  QPointer<VembrixSpaceRowView> widget_;
};

}  // namespace

std::unique_ptr<SpaceRowView> SpaceRowView::create(SpaceRowContent content, SpaceRowState state,
                                                   std::unique_ptr<SpaceRowHandler> handler) {
  return std::make_unique<QtSpaceRowView>(std::move(content), std::move(state), std::move(handler));
}

}  // namespace vembrix
