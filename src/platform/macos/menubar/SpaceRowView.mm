#import "platform/SpaceRowView.h"

#include <utility>

#import "platform/macos/menubar/NativeSpaceRowView.h"
#import "platform/macos/menubar/VembrixSpaceRowView.h"
#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

/// Owns the item, its view and the handler. The view refers to the handler, and is invalidated
/// first: a menu that is being rebuilt, or the pool of that event, may keep it a little longer.
class SystemSpaceRowView : public NativeSpaceRowView {
 public:
  SystemSpaceRowView(const SpaceRowContent& content, const SpaceRowState& state,
                     std::unique_ptr<SpaceRowHandler> handler)
      : handler_(std::move(handler)),
        view_([[VembrixSpaceRowView alloc] initWithContent:content
                                                     state:state
                                                   handler:handler_.get()]),
        item_([[NSMenuItem alloc] initWithTitle:nativeString(state.label)
                                         action:@selector(activate:)
                                  keyEquivalent:@""]) {
    // The title is not drawn. It is read out, and typing its beginning selects the row.
    item_.target = view_;
    item_.view = view_;
    if (!content.dotDescription.empty()) {
      item_.accessibilityValue = nativeString(content.dotDescription);
    }
    handler_->attach(*this);
  }

  ~SystemSpaceRowView() override { [view_ invalidate]; }

  SystemSpaceRowView(const SystemSpaceRowView&) = delete;
  SystemSpaceRowView& operator=(const SystemSpaceRowView&) = delete;

  NSMenuItem* nativeItem() const override { return item_; }

  void setHighlighted(bool isHighlighted) override { [view_ setHighlighted:isHighlighted]; }

  NSView* detachView() override {
    [view_ invalidate];
    item_.target = nil;
    item_.view = nil;
    return view_;
  }

  void setState(const SpaceRowState& state) override { [view_ show:state]; }

  std::string editedText() const override { return utf8String(view_.editedText); }

  void closeMenu() override { [view_ closeMenu]; }

 private:
  const std::unique_ptr<SpaceRowHandler> handler_;
  VembrixSpaceRowView* const view_;
  NSMenuItem* const item_;
};

}  // namespace

// By value for those who keep them; AppKit's objects keep their own.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
std::unique_ptr<SpaceRowView> SpaceRowView::create(SpaceRowContent content, SpaceRowState state,
                                                   std::unique_ptr<SpaceRowHandler> handler) {
  return std::make_unique<SystemSpaceRowView>(content, state, std::move(handler));
}

}  // namespace vembrix
