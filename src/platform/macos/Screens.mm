#import "platform/Screens.h"

#include <algorithm>

#include "platform/NotificationCenter.h"
#import "platform/macos/support/Conversions.h"
#import "platform/macos/support/ScreenCache.h"

namespace vembrix {
namespace {

bool cacheIsStale = true;

/// NSScreen as values. They are kept: a visible frame depends on the Dock, so that
/// asking NSScreen for one can cost a call to another process. Owns those values and
/// keeps no NSScreen, which AppKit replaces as it likes.
class SystemScreens : public Screens {
 public:
  // The center exists from here on, and calls invalidateScreenCache().
  SystemScreens() { NotificationCenter::defaultCenter(); }

  const std::vector<Screen>& all() const override {
    if (cacheIsStale) read();
    return screens_;
  }

  const Screen* mainScreen() const override {
    @autoreleasepool {
      NSScreen* main = NSScreen.mainScreen;
      if (!main) return nullptr;
      const Rect frame = rectFrom(main.frame);
      if (const Screen* screen = find(frame)) return screen;
      // AppKit knows of a change that it has not reported yet.
      cacheIsStale = true;
      return find(frame);
    }
  }

 private:
  const Screen* find(const Rect& frame) const {
    const auto& screens = all();
    const auto found = std::ranges::find(screens, frame, &Screen::frame);
    return found == screens.end() ? nullptr : &*found;
  }

  void read() const {
    @autoreleasepool {
      NSArray<NSScreen*>* present = NSScreen.screens;
      // On the way from one display to the next, and in sleep, there may be none. What
      // there was stands until there is one again.
      if (present.count == 0) return;
      screens_.clear();
      for (NSScreen* screen in present) {
        screens_.push_back(
            {rectFrom(screen.frame), rectFrom(screen.visibleFrame), screen.backingScaleFactor});
      }
      cacheIsStale = false;
    }
  }

  mutable std::vector<Screen> screens_;
};

}  // namespace

void invalidateScreenCache() { cacheIsStale = true; }

const Screens& Screens::shared() {
  static const auto& screens = *new SystemScreens;
  return screens;
}

}  // namespace vembrix
