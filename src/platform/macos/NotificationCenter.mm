#import "platform/NotificationCenter.h"

#import <AppKit/AppKit.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/MainQueue.h"
#import "platform/macos/AppearanceObserver.h"
#import "platform/macos/support/Conversions.h"
#import "platform/macos/support/ScreenCache.h"

/// The only observer of a name at a native center. Owned by the C++ center, to which its block
/// refers.
@interface VembrixNotificationRelay : NSObject
@property(nonatomic, readonly, copy) NSString* name;
- (instancetype)initWithName:(NSString*)name handler:(void (^)(void))handler;
- (void)receive:(nullable NSNotification*)notification;
@end

@implementation VembrixNotificationRelay {
  void (^_handler)(void);
}

- (instancetype)initWithName:(NSString*)name handler:(void (^)(void))handler {
  self = [super init];
  if (self) {
    _name = [name copy];
    _handler = [handler copy];
  }
  return self;
}

- (void)receive:(NSNotification*)notification {
  // Notifications of other processes arrive outside of AppKit's events and their pools.
  @autoreleasepool {
    _handler();
  }
}

@end

namespace vembrix {
namespace {

struct Observer {
  std::function<void()> handler;
  bool isDropped = false;
};

/// The observers of one name, in the order in which they were added. A change creates another list,
/// so a post continues with the list with which it began.
struct Channel {
  using Observers = std::vector<std::shared_ptr<Observer>>;

  VembrixNotificationRelay* relay = nil;
  std::shared_ptr<const Observers> observers = std::make_shared<const Observers>();

  Observation add(std::function<void()> handler) {
    const auto observer = std::make_shared<Observer>(Observer{std::move(handler)});
    Observers changed = *observers;
    changed.push_back(observer);
    observers = std::make_shared<const Observers>(std::move(changed));
    return Observation([this, observer] { drop(observer); });
  }

  void drop(const std::shared_ptr<Observer>& observer) {
    observer->isDropped = true;
    Observers changed = *observers;
    std::erase(changed, observer);
    observers = std::make_shared<const Observers>(std::move(changed));
  }

  void tell() const {
    const std::shared_ptr<const Observers> present = observers;
    for (const auto& observer : *present) {
      if (!observer->isDropped) observer->handler();
    }
  }
};

/// A center of the system. The system promises no order among observers, and nothing about
/// observers that are added or removed during a post. So it gets one observer per name, which stays
/// and calls the product's observers by the product's rules. Centers and channels are never
/// destroyed.
class SystemNotificationCenter : public NotificationCenter {
 public:
  explicit SystemNotificationCenter(NSNotificationCenter* center) : center_(center) {}

  Observation addObserver(std::string_view name, std::function<void()> handler) override {
    auto entry = channels_.find(name);
    if (entry == channels_.end()) {
      entry = channels_.try_emplace(std::string(name)).first;
      open(name, entry->second);
    }
    return entry->second.add(std::move(handler));
  }

  void post(std::string_view name) override {
    @autoreleasepool {
      const auto entry = channels_.find(name);
      postTo(center_, entry == channels_.end() ? nativeString(name) : entry->second.relay.name);
    }
  }

 protected:
  virtual void listenAt(NSNotificationCenter* center, VembrixNotificationRelay* relay) {
    [center addObserver:relay selector:@selector(receive:) name:relay.name object:nil];
  }
  virtual void postTo(NSNotificationCenter* center, NSString* name) {
    [center postNotificationName:name object:nil];
  }
  /// Called when a notification has arrived.
  virtual void receive(std::string_view, const Channel& channel) { channel.tell(); }

 private:
  void open(std::string_view name, Channel& channel) {
    @autoreleasepool {
      Channel* const opened = &channel;
      const std::string kept(name);
      channel.relay = [[VembrixNotificationRelay alloc] initWithName:nativeString(name)
                                                             handler:^{
                                                               receive(kept, *opened);
                                                             }];
      listenAt(center_, channel.relay);
    }
  }

  NSNotificationCenter* const center_;
  std::map<std::string, Channel, std::less<>> channels_;
};

/// The center for notifications of other processes. AppKit suspends it while the
/// application is not active, which is nearly always the case for an accessory, so posts are both
/// sent and received immediately.
///
/// The system reports a new theme before AppKit applies it. Observers of the theme are called once,
/// when the application's appearance has changed.
class DistributedNotificationCenter : public SystemNotificationCenter {
 public:
  DistributedNotificationCenter()
      : SystemNotificationCenter(NSDistributedNotificationCenter.defaultCenter) {}

 protected:
  void listenAt(NSNotificationCenter* center, VembrixNotificationRelay* relay) override {
    [static_cast<NSDistributedNotificationCenter*>(center)
               addObserver:relay
                  selector:@selector(receive:)
                      name:relay.name
                    object:nil
        suspensionBehavior:NSNotificationSuspensionBehaviorDeliverImmediately];
    if (![relay.name isEqualToString:nativeString(notification::kInterfaceThemeChanged)]) return;
    NSApplication* application = [NSApplication sharedApplication];
    appearance_ = appearanceFrom(application.effectiveAppearance);
    observer_ = [[VembrixAppearanceObserver alloc] initWithSubject:application
                                                           handler:^{
                                                             [relay receive:nil];
                                                           }];
  }

  void postTo(NSNotificationCenter* center, NSString* name) override {
    [static_cast<NSDistributedNotificationCenter*>(center) postNotificationName:name
                                                                         object:nil
                                                                       userInfo:nil
                                                             deliverImmediately:YES];
  }

  void receive(std::string_view name, const Channel& channel) override {
    const bool isTheme = name == notification::kInterfaceThemeChanged;
    MainQueue::main().async([this, isTheme, &channel] {
      if (!isTheme || takeUpAppearance()) channel.tell();
    });
  }

 private:
  /// Returns whether the application's appearance has changed since it was last reported.
  bool takeUpAppearance() {
    const std::optional<Appearance> now =
        appearanceFrom([NSApplication sharedApplication].effectiveAppearance);
    return std::exchange(appearance_, now) != now;
  }

  VembrixAppearanceObserver* observer_ = nil;
  std::optional<Appearance> appearance_;
};

}  // namespace

NotificationCenter& NotificationCenter::defaultCenter() {
  static auto& center = *new SystemNotificationCenter(NSNotificationCenter.defaultCenter);
  // The first observer, ahead of all others.
  static const auto& screens = *new Observation(
      center.addObserver(notification::kScreenParametersDidChange, invalidateScreenCache));
  static_cast<void>(screens);
  return center;
}

NotificationCenter& NotificationCenter::workspace() {
  static auto& center =
      *new SystemNotificationCenter(NSWorkspace.sharedWorkspace.notificationCenter);
  return center;
}

NotificationCenter& NotificationCenter::distributed() {
  static auto& center = *new DistributedNotificationCenter;
  return center;
}

}  // namespace vembrix
