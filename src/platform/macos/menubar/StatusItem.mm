#import "platform/StatusItem.h"

#import <AppKit/AppKit.h>
#import <QuartzCore/QuartzCore.h>

#include <optional>
#include <utility>
#include <vector>

#import "platform/macos/AppearanceObserver.h"
#include "platform/macos/menubar/ItemSight.h"
#import "platform/macos/menubar/NativeDropdownMenu.h"
#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

/// The longest time from a click on the item to an open menu, in seconds.
constexpr double kPatience = 0.3;

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
  // VoiceOver's name for a button without a title.
  image.accessibilityDescription = NSProcessInfo.processInfo.processName;
  return image;
}

std::optional<ItemWindow> itemWindow(NSWindow* window) {
  if (!window) return {};
  return ItemWindow{rectFrom(window.frame),
                    (window.occlusionState & NSWindowOcclusionStateVisible) != 0};
}

std::vector<MenuBarScreen> menuBarScreens() {
  std::vector<MenuBarScreen> screens;
  for (NSScreen* screen in NSScreen.screens) {
    const Rect frame = rectFrom(screen.frame);
    screens.push_back({frame, notchBetween(frame, rectFrom(screen.auxiliaryTopLeftArea),
                                           rectFrom(screen.auxiliaryTopRightArea))});
  }
  return screens;
}

/// Owns the native item and the menu; the system keeps the item in the menu bar until it is
/// removed. The observer of the button's appearance refers back to this object, and is invalidated
/// first.
class SystemStatusItem : public StatusItem {
 public:
  SystemStatusItem() {
    NSStatusBarButton* button = item_.button;
    if (!button) return;
    // Clips a title that is too wide; by default a button shows an ellipsis.
    button.lineBreakMode = NSLineBreakByClipping;
    appearance_ = [[VembrixAppearanceObserver alloc] initWithSubject:button
                                                             handler:^{
                                                               appearanceDidChange();
                                                             }];
  }

  ~SystemStatusItem() override {
    [appearance_ invalidate];
    [lookAgain_ invalidate];
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
    // The old menu lives until the item no longer refers to it.
    std::swap(menu_, menu);
    item_.menu = nativeMenu() ? nativeMenu()->nativeMenu() : nil;
  }

  DropdownMenu* menu() const override { return menu_.get(); }

  void openMenu() override {
    const NativeDropdownMenu* native = nativeMenu();
    if (!native || native->isOpen()) return;
    NSStatusBarButton* button = item_.button;
    if (!isItemSeen(itemWindow(button.window), menuBarScreens())) {
      openMenuAtCorner();
      return;
    }
    const int openings = native->openings();
    [button performClick:nil];
    // The click has usually lasted as long as the menu was open. Beside a full-screen program on
    // another display it is reported to have no effect.
    if (native->openings() == openings) lookAgain(openings);
  }

 private:
  /// Null if there is no menu.
  const NativeDropdownMenu* nativeMenu() const {
    // Every menu comes from DropdownMenu::create().
    return static_cast<const NativeDropdownMenu*>(menu_.get());
  }

  /// Checks a moment later whether the menu has opened. By a timer, because the main queue would
  /// wait until the menu closes.
  void lookAgain(int openings) {
    [lookAgain_ invalidate];
    lookAgain_ = [NSTimer timerWithTimeInterval:kPatience
                                        repeats:NO
                                          block:^(NSTimer*) {
                                            const NativeDropdownMenu* menu = nativeMenu();
                                            if (menu && menu->openings() == openings) {
                                              openMenuAtCorner();
                                            }
                                          }];
    [NSRunLoop.mainRunLoop addTimer:lookAgain_ forMode:NSRunLoopCommonModes];
  }

  /// Opens the menu at the end of the menu bar's items. AppKit moves it onto the screen.
  void openMenuAtCorner() const {
    NSScreen* screen = NSScreen.mainScreen;
    if (!screen) return;
    const NSRect area = screen.visibleFrame;
    [nativeMenu()->nativeMenu() popUpMenuPositioningItem:nil
                                              atLocation:NSMakePoint(NSMaxX(area), NSMaxY(area))
                                                  inView:nil];
  }

  static void showLabel(NSStatusBarButton* button, const StatusItemContent::PlainTitle& title) {
    button.image = nil;
    button.title = nativeString(title.text);
  }

  static void showLabel(NSStatusBarButton* button,
                        const StatusItemContent::AttributedTitle& title) {
    showLabel(button, StatusItemContent::PlainTitle{title.text});
    // As an attributed string, the plain title has the menu bar's font and the button's paragraph
    // style. Other attributed strings would have the text system's defaults.
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
    // A layer's colour is fixed, so a system colour is resolved for the menu bar, which may be dark
    // in a light system.
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
  /// The timer that checks whether a click has opened the menu.
  NSTimer* lookAgain_ = nil;
  /// The content shown; empty before the first.
  std::optional<StatusItemContent> content_;
};

}  // namespace

std::unique_ptr<StatusItem> StatusItem::create() { return std::make_unique<SystemStatusItem>(); }

}  // namespace vembrix
