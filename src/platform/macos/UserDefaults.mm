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

/// The preferences system, which keeps the values of the process's own domain in memory and is
/// informed of other processes' writes. Owns, for each key, the object that was read last and its
/// value; the store itself is Foundation's.
class SystemUserDefaults : public UserDefaults {
 public:
  SystemUserDefaults() {
    // A value that was just set is on its way to the process that stores it, and would be lost if
    // this process ended now. AppKit waits for that when it ends the process, but not when main()
    // returns.
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
      // Compared by identity, because a Boolean equals a number. Stored objects never change, and
      // this one is retained, so its address is not reused.
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
      // Read from the same place as the key list. The function for applications' own settings would
      // also find those that all applications share.
      const auto value = CFOwned<CFPropertyListRef>::adopt(CFPreferencesCopyValue(
          (__bridge CFStringRef)nativeString(key), (__bridge CFStringRef)nativeString(domain),
          kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
      return propertyListFrom((__bridge id)value.get());
    }
  }

 private:
  /// The value of a key when it was last read.
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
