#import "platform/TourOverlay.h"

#import "platform/macos/labels/VembrixBareWindow.h"
#import "platform/macos/labels/VembrixTourOverlayView.h"
#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

/// Owns the native window until hide(); then the fade's completion does.
class SystemTourOverlay : public TourOverlay {
 public:
  explicit SystemTourOverlay(const TourOverlayContent& content)
      : window_([[VembrixBareWindow alloc] initWithFrame:nativeRect(content.frame)
                                                   level:content.level
                                                behavior:content.collectionBehavior]) {
    window_.contentView = [[VembrixTourOverlayView alloc] initWithContent:content];
  }

  ~SystemTourOverlay() override {
    @autoreleasepool {
      [window_ dismiss];
    }
  }

  SystemTourOverlay(const SystemTourOverlay&) = delete;
  SystemTourOverlay& operator=(const SystemTourOverlay&) = delete;

  void show(Duration fade) override {
    @autoreleasepool {
      window_.opacity = 0;
      [window_ showInFront];
      [window_ fadeTo:1 duration:fade completion:nil];
    }
  }

  void hide(Duration fade) override {
    @autoreleasepool {
      VembrixBareWindow* window = window_;
      window_ = nil;
      [window fadeTo:0
            duration:fade
          completion:^{
            [window dismiss];
          }];
    }
  }

 private:
  /// Nil once it is hidden, or its fade to that has begun.
  VembrixBareWindow* window_;
};

}  // namespace

std::unique_ptr<TourOverlay> TourOverlay::create(const TourOverlayContent& content) {
  @autoreleasepool {
    return std::make_unique<SystemTourOverlay>(content);
  }
}

}  // namespace vembrix
