#import "platform/Screens.h"

#include <algorithm>

#include "platform/NotificationCenter.h"
#import "platform/macos/support/Conversions.h"
#import "platform/macos/support/ScreenCache.h"

namespace vembrix {
namespace {

bool cacheIsStale = true;

/// The screens as values. They are cached: a visible frame depends on the Dock, so asking NSScreen
/// for it can cost a call to another process. Owns the values and keeps no NSScreen, which AppKit
/// replaces at any time.
class SystemScreens : public Screens {
 public:
  // Creates the center, which calls invalidateScreenCache().
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
      // AppKit has noticed a change that it has not reported yet.
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
      // While displays are exchanged, and during sleep, there may be no screen. The former ones are
      // kept until there is one again.
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
