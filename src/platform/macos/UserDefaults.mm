#import "platform/UserDefaults.h"

#import <Foundation/Foundation.h>

#include <cstdlib>
#include <map>
#include <string>

#include "platform/SystemLog.h"
#import "platform/macos/support/CFOwned.h"
#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

/// The preferences system, which keeps the values of the process's own domain in memory and reports
/// other processes' writes to this one. Owns, per key, the object that was read last and its value;
/// the store itself is Foundation's.
class SystemUserDefaults : public UserDefaults {
 public:
  SystemUserDefaults() {
    // A value that was just set is on its way to the process that stores it and would be lost with
    // this one. AppKit waits for that where it ends the process, but not where main() returns.
    std::atexit([] { CFPreferencesAppSynchronize(kCFPreferencesCurrentApplication); });
  }

  PropertyList object(std::string_view key) const override {
    @autoreleasepool {
      auto entry = values_.find(key);
      if (entry == values_.end()) {
        entry = values_.emplace(std::string(key), Value{nativeString(key), nil, {}}).first;
      }
      Value& value = entry->second;
      id stored = [defaults_ objectForKey:value.key];
      // By identity: equal is not the same here, since a Boolean equals a number.
      // What is stored never changes in place, and cannot go while it is held.
      if (stored != value.native) {
        value.converted = propertyListFrom(stored);
        value.native = stored;
      }
      return value.converted;
    }
  }

  void set(std::string_view key, const PropertyList& value) override {
    @autoreleasepool {
      NSString* name = nativeString(key);
      if (value.isNull()) {
        [defaults_ removeObjectForKey:name];
      } else if (id object = nativeObject(value, NativeForm::PropertyList)) {
        [defaults_ setObject:object forKey:name];
      } else {
        logLine("UserDefaults: no property list, not stored: " + std::string(key));
      }
    }
  }

  PropertyList keyList(std::string_view domain) const override {
    @autoreleasepool {
      const auto keys = CFOwned<CFArrayRef>::adopt(
          CFPreferencesCopyKeyList((__bridge CFStringRef)nativeString(domain),
                                   kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
      return propertyListFrom((__bridge id)keys.get());
    }
  }

  PropertyList object(std::string_view key, std::string_view domain) const override {
    @autoreleasepool {
      // From where the key list comes. The lookup that applications use for their
      // own settings would also find what all applications share.
      const auto value = CFOwned<CFPropertyListRef>::adopt(CFPreferencesCopyValue(
          (__bridge CFStringRef)nativeString(key), (__bridge CFStringRef)nativeString(domain),
          kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
      return propertyListFrom((__bridge id)value.get());
    }
  }

 private:
  /// What a key held when it was last read.
  struct Value {
    NSString* key;
    id native;
    PropertyList converted;
  };

  NSUserDefaults* const defaults_ = NSUserDefaults.standardUserDefaults;
  mutable std::map<std::string, Value, std::less<>> values_;
};

}  // namespace

UserDefaults& UserDefaults::standard() {
  static auto& defaults = *new SystemUserDefaults;
  return defaults;
}

}  // namespace vembrix
