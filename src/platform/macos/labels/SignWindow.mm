#import "platform/SignWindow.h"

#include <string>

#import "platform/macos/labels/VembrixBareWindow.h"
#import "platform/macos/labels/VembrixSignView.h"
#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

/// Owns nothing: the native view belongs to the window. Compares new values with the present ones,
/// so that unchanged ones do not reach AppKit.
class SystemSignView : public SignView {
 public:
  SystemSignView(VembrixBareWindow* window, VembrixSignView* view) : window_(window), view_(view) {
    view_.label.font = nativeFont(font_);
  }

  void setText(std::string_view text) override {
    if (text_ == text) return;
    text_ = text;
    @autoreleasepool {
      view_.label.stringValue = nativeString(text);
      contentDidChange();
    }
  }

  void setFont(const Font& font) override {
    if (font_ == font) return;
    font_ = font;
    @autoreleasepool {
      view_.label.font = nativeFont(font);
      contentDidChange();
    }
  }

  void setLook(const SignLook& look) override {
    if (look_ == look) return;
    const bool isOtherShape = look_.fill.alpha != look.fill.alpha;
    look_ = look;
    @autoreleasepool {
      [view_ show:look];
      if (isOtherShape) {
        [window_ shapeDidChange];
      } else {
        contentDidChange();
      }
    }
  }

  void setNeedsDisplay() override {
    view_.needsDisplay = YES;
    view_.label.needsDisplay = YES;
  }

 private:
  /// Updates the shadow if the panel is translucent: only then do text and rim contribute to it.
  void contentDidChange() {
    if (look_.fill.alpha < 1) [window_ shapeDidChange];
  }

  VembrixBareWindow* const window_;
  VembrixSignView* const view_;
  std::string text_;
  Font font_;
  SignLook look_;
};

/// Owns the native window, which owns the view.
class SystemSignWindow : public SignWindow {
 public:
  explicit SystemSignWindow(const Options& options)
      : window_([[VembrixBareWindow alloc] initWithFrame:nativeRect(options.frame)
                                                   level:options.level
                                                behavior:options.collectionBehavior]),
        view_(window_, addView(window_, options)) {}

  ~SystemSignWindow() override {
    @autoreleasepool {
      [window_ dismiss];
    }
  }

  SystemSignWindow(const SystemSignWindow&) = delete;
  SystemSignWindow& operator=(const SystemSignWindow&) = delete;

  WindowServer::WindowNumber windowNumber() const override {
    // Negative or 0 for a window that the window server does not know.
    const NSInteger number = window_.windowNumber;
    return number > 0 ? static_cast<WindowServer::WindowNumber>(number) : 0;
  }

  SignView& view() override { return view_; }

  Rect frame() const override { return rectFrom(window_.frame); }

  void setFrame(const Rect& frame) override {
    @autoreleasepool {
      [window_ placeAt:nativeRect(frame)];
    }
  }

  void setCollectionBehavior(std::uint64_t behavior) override { [window_ setBehavior:behavior]; }

  double alphaValue() const override { return window_.opacity; }

  void setAlphaValue(double alpha) override {
    @autoreleasepool {
      window_.opacity = alpha;
    }
  }

  void animateAlphaValue(double alpha, Duration duration) override {
    @autoreleasepool {
      [window_ fadeTo:alpha duration:duration completion:nil];
    }
  }

  void orderFront() override {
    @autoreleasepool {
      [window_ showInFront];
    }
  }

 private:
  static VembrixSignView* addView(VembrixBareWindow* window, const Options& options) {
    auto* view = [[VembrixSignView alloc]
        initWithFrame:NSMakeRect(0, 0, options.frame.width, options.frame.height)
         cornerRadius:options.cornerRadius
              padding:options.padding];
    window.contentView = view;
    return view;
  }

  VembrixBareWindow* const window_;
  SystemSignView view_;
};

}  // namespace

std::unique_ptr<SignWindow> SignWindow::create(const Options& options) {
  @autoreleasepool {
    return std::make_unique<SystemSignWindow>(options);
  }
}

}  // namespace vembrix
