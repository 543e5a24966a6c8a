#import "platform/PreviewCanvas.h"

#import <AppKit/AppKit.h>

#include <variant>

#import "platform/macos/menubar/NativeSpaceRowView.h"
#import "platform/macos/support/CFOwned.h"
#import "platform/macos/support/Conversions.h"
#import "platform/macos/ui/Backdrop.h"
#import "platform/macos/ui/FormControls.h"
#import "platform/macos/ui/NativeSettingsWindow.h"

namespace vembrix {
namespace {

/// Returns a bitmap of the view at the scale of its window; nil if none can be created. AppKit
/// draws each view with the background, the border and the round corners of its layer. It leaves
/// out what the window server adds on the screen, and so all of a material.
NSBitmapImageRep* capture(NSView* view) {
  NSBitmapImageRep* bitmap = [view bitmapImageRepForCachingDisplayInRect:view.bounds];
  if (bitmap) [view cacheDisplayInRect:view.bounds toBitmapImageRep:bitmap];
  return bitmap;
}

/// Returns an empty picture of that many pixels, in sRGB, so that pictures are the same on every
/// machine, whatever the profile of its display.
CFOwned<CGContextRef> makeContext(NSInteger width, NSInteger height) {
  constexpr std::size_t kBitsPerComponent = 8;
  const auto space = CFOwned<CGColorSpaceRef>::adopt(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
  return CFOwned<CGContextRef>::adopt(CGBitmapContextCreate(
      nullptr, static_cast<std::size_t>(width), static_cast<std::size_t>(height), kBitsPerComponent,
      /*bytesPerRow=*/0, space.get(), static_cast<CGBitmapInfo>(kCGImageAlphaPremultipliedLast)));
}

std::optional<std::string> encoded(CGContextRef context) {
  const auto image = CFOwned<CGImageRef>::adopt(CGBitmapContextCreateImage(context));
  if (!image) return std::nullopt;
  auto* bitmap = [[NSBitmapImageRep alloc] initWithCGImage:image.get()];
  NSData* png = [bitmap representationUsingType:NSBitmapImageFileTypePNG properties:@{}];
  if (!png) return std::nullopt;
  return std::string(static_cast<const char*>(png.bytes), png.length);
}

/// Returns the view on the background. Drawn separately, because views that let the window show
/// through may replace pixels of the background.
std::optional<std::string> picture(NSView* view, const Srgb& ground) {
  NSBitmapImageRep* captured = capture(view);
  if (!captured) return std::nullopt;
  const auto context = makeContext(captured.pixelsWide, captured.pixelsHigh);
  if (!context) return std::nullopt;
  const CGRect all = CGRectMake(0, 0, captured.pixelsWide, captured.pixelsHigh);
  CGContextSetRGBFillColor(context.get(), ground.red, ground.green, ground.blue, ground.alpha);
  CGContextFillRect(context.get(), all);
  // Copies pixels one to one.
  CGContextSetInterpolationQuality(context.get(), kCGInterpolationNone);
  CGContextDrawImage(context.get(), all, captured.CGImage);
  return encoded(context.get());
}

/// Returns the colour behind the content, for the view's appearance.
Srgb groundOf(const SettingsContent& content, NSView* view) {
  if (const auto* themed = std::get_if<ThemedContent>(&content.body)) {
    if (const auto* material = std::get_if<Material>(&themed->backdrop)) {
      return groundOf(*material, orLight(appearanceFrom(view.effectiveAppearance)));
    }
  }
  __block Srgb ground;
  NSColor* color = nativeColor(content.chrome.background);
  [view.effectiveAppearance performAsCurrentDrawingAppearance:^{
    ground = srgbFrom(color);
  }];
  return ground;
}

NSView* makeCanvas(MenuMock& mock) {
  auto* canvas =
      [[VembrixLayerView alloc] initWithFrame:NSMakeRect(0, 0, mock.size.width, mock.size.height)];
  canvas.fill = nativeColor(mock.background);
  canvas.cornerRadius = mock.cornerRadius;
  for (const MenuMock::Row& row : mock.rows) {
    // Every row comes from SpaceRowView::create().
    NSView* view = static_cast<NativeSpaceRowView*>(row.view.get())->detachView();
    view.frame = nativeRect(row.frame);
    [canvas addSubview:view];
  }
  for (const MenuMock::Separator& separator : mock.separators) {
    auto* line = [[VembrixLayerView alloc] initWithFrame:nativeRect(separator.frame)];
    line.fill = nativeColor(separator.color);
    [canvas addSubview:line];
  }
  for (const MenuMock::Label& label : mock.labels) {
    NSTextField* text = makeLabel(label.text, {.font = label.font, .color = label.color});
    text.frame = nativeRect(label.frame);
    [canvas addSubview:text];
  }
  return canvas;
}

/// Returns a window for drawing that is never on the screen. It owns the view.
NSWindow* makeHost(NSView* view, Appearance appearance) {
  auto* window = [[NSWindow alloc] initWithContentRect:view.frame
                                             styleMask:NSWindowStyleMaskBorderless
                                               backing:NSBackingStoreBuffered
                                                 defer:NO
                                                screen:NSScreen.mainScreen];
  window.releasedWhenClosed = NO;
  window.backgroundColor = NSColor.clearColor;
  window.opaque = NO;
  window.appearance = nativeAppearance(appearance);
  window.contentView = view;
  return window;
}

/// Uses the picture's colour space for the window, in which its views draw, so that no other
/// conversion is needed.
void prepare(NSWindow* window) {
  window.colorSpace = NSColorSpace.sRGBColorSpace;
  [window layoutIfNeeded];
  [window.contentView layoutSubtreeIfNeeded];
}

/// Owns nothing between two pictures. Windows and views need the application, but not its event
/// loop. None of them is ever on the screen or knows the position of the pointer.
class SystemPreviewCanvas : public PreviewCanvas {
 public:
  std::optional<std::string> draw(SettingsContent content) override {
    // Outside of an event there is no pool of AppKit's.
    @autoreleasepool {
      const Size size = content.size();
      // Every settings window comes from SettingsWindow::create().
      const auto window = SettingsWindow::create(size, "");
      NSWindow* native = static_cast<NativeSettingsWindow&>(*window).nativeWindow();
      window->setContent(content);
      // Full-size content extends below a title bar whose height differs between systems.
      [native setContentSize:nativeSize(size)];
      prepare(native);
      return picture(native.contentView, groundOf(content, native.contentView));
    }
  }

  std::optional<std::string> draw(MenuMock mock) override {
    @autoreleasepool {
      NS_VALID_UNTIL_END_OF_SCOPE NSWindow* window = makeHost(makeCanvas(mock), mock.appearance);
      prepare(window);
      constexpr Srgb kNothing{0, 0, 0, 0};
      return picture(window.contentView, kNothing);
    }
  }
};

}  // namespace

PreviewCanvas& PreviewCanvas::shared() {
  static auto& canvas = *new SystemPreviewCanvas;
  return canvas;
}

}  // namespace vembrix
