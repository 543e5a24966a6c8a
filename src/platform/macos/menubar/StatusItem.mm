#import "platform/StatusItem.h"

#import <AppKit/AppKit.h>
#import <QuartzCore/QuartzCore.h>

#include <utility>

#import "platform/macos/AppearanceObserver.h"
#import "platform/macos/Conversions.h"
#import "platform/macos/menubar/NativeDropdownMenu.h"

namespace vembrix {
namespace {

NSImage* makeImage(const TemplateImage& given) {
  // The block's own copy, which clang-tidy takes for needless: it draws whenever the
  // menu bar asks for another scale.
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
  const TemplateImage drawing = given;
  NSImage* image = [NSImage imageWithSize:nativeSize(drawing.size)
                                  flipped:NO
                           drawingHandler:^BOOL(NSRect) {
                             [NSColor.blackColor setFill];
                             for (const auto& shape : drawing.shapes) {
                               [[NSBezierPath bezierPathWithRoundedRect:nativeRect(shape.rect)
                                                                xRadius:shape.radius
                                                                yRadius:shape.radius] fill];
                             }
                             return YES;
                           }];
  [image setTemplate:YES];
  return image;
}

/// Owns the native item and the menu; the system keeps the item in the menu bar
/// until it is removed. The observer of the button's appearance leads back here,
/// and is invalidated first.
class SystemStatusItem : public StatusItem {
 public:
  SystemStatusItem() {
    NSStatusBarButton* button = item_.button;
    if (!button) return;
    // A wider title is cut, where a button would show an ellipsis.
    button.lineBreakMode = NSLineBreakByClipping;
    appearance_ = [[VembrixAppearanceObserver alloc] initWithSubject:button
                                                             handler:^{
                                                               appearanceDidChange();
                                                             }];
  }

  ~SystemStatusItem() override {
    [appearance_ invalidate];
    item_.menu = nil;
    [NSStatusBar.systemStatusBar removeStatusItem:item_];
  }

  SystemStatusItem(const SystemStatusItem&) = delete;
  SystemStatusItem& operator=(const SystemStatusItem&) = delete;

  bool hasButton() const override { return item_.button != nil; }

  void setContent(const StatusItemContent& content) override {
    if (content_ == content) return;
    content_ = content;
    if (NSStatusBarButton* button = item_.button) {
      button.wantsLayer = YES;
      button.contentTintColor = nil;
      std::visit([&](const auto& label) { showLabel(button, label); }, content.label);
      showFill();
    }
    item_.length = content.length.points;
  }

  void setMenu(std::unique_ptr<DropdownMenu> menu) override {
    // Every menu comes from DropdownMenu::create().
    const auto* native = static_cast<const NativeDropdownMenu*>(menu.get());
    item_.menu = native ? native->nativeMenu() : nil;
    menu_ = std::move(menu);
  }

  DropdownMenu* menu() const override { return menu_.get(); }

  void openMenu() override {
    // Every menu comes from DropdownMenu::create().
    const auto* native = static_cast<const NativeDropdownMenu*>(menu_.get());
    if (!native || native->isOpen()) return;
    NSStatusBarButton* button = item_.button;
    const bool isSeen = (button.window.occlusionState & NSWindowOcclusionStateVisible) != 0;
    if (isSeen) {
      [button performClick:nil];
      return;
    }
    // The item is behind the notch, did not fit, or the menu bar is hidden: the menu
    // opens where the menu bar's items end. AppKit moves it onto the screen.
    const NSRect area = NSScreen.mainScreen.visibleFrame;
    [native->nativeMenu() popUpMenuPositioningItem:nil
                                        atLocation:NSMakePoint(NSMaxX(area), NSMaxY(area))
                                            inView:nil];
  }

 private:
  static void showLabel(NSStatusBarButton* button, const StatusItemContent::PlainTitle& title) {
    button.image = nil;
    button.title = nativeString(title.text);
  }

  static void showLabel(NSStatusBarButton* button,
                        const StatusItemContent::AttributedTitle& title) {
    showLabel(button, StatusItemContent::PlainTitle{title.text});
    // As an attributed string the plain title has the menu bar's font and the
    // button's paragraph style; a string without them would be drawn in the text
    // system's defaults.
    NSMutableAttributedString* text = [button.attributedTitle mutableCopy];
    [text addAttribute:NSForegroundColorAttributeName
                 value:nativeColor(title.color)
                 range:NSMakeRange(0, text.length)];
    button.attributedTitle = text;
  }

  static void showLabel(NSStatusBarButton* button, const TemplateImage& image) {
    button.attributedTitle = [[NSAttributedString alloc] init];
    button.image = makeImage(image);
  }

  void showFill() {
    NSStatusBarButton* button = item_.button;
    CALayer* layer = button.layer;
    layer.cornerRadius = content_->cornerRadius;
    if (!content_->fill) {
      layer.backgroundColor = nil;
      return;
    }
    NSColor* color = nativeColor(*content_->fill);
    // A layer's colour is fixed, so one of the system's is resolved for the menu
    // bar, which may be dark in a light system.
    [button.effectiveAppearance performAsCurrentDrawingAppearance:^{
      layer.backgroundColor = color.CGColor;
    }];
  }

  void appearanceDidChange() {
    if (content_ && content_->fill && content_->fill->systemColor()) showFill();
  }

  NSStatusItem* const item_ =
      [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
  VembrixAppearanceObserver* appearance_ = nil;
  std::unique_ptr<DropdownMenu> menu_;
  /// What is shown; nothing before the first content.
  std::optional<StatusItemContent> content_;
};

}  // namespace

std::unique_ptr<StatusItem> StatusItem::create() { return std::make_unique<SystemStatusItem>(); }

}  // namespace vembrix
