// Usage: domain_tool write|read DOMAIN
// Makes the property list on standard input all that the domain holds; or writes what it
// holds to standard output, or nothing where it holds nothing.
#import <Foundation/Foundation.h>

#import "platform/macos/support/CFOwned.h"

namespace vembrix {
namespace {

CFOwned<CFArrayRef> keysOf(CFStringRef domain) {
  return CFOwned<CFArrayRef>::adopt(
      CFPreferencesCopyKeyList(domain, kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
}

bool write(CFStringRef domain) {
  NSData* data = [NSFileHandle.fileHandleWithStandardInput readDataToEndOfFileAndReturnError:nil];
  NSDictionary* contents = [NSPropertyListSerialization propertyListWithData:data
                                                                     options:0
                                                                      format:nil
                                                                       error:nil];
  if (![contents isKindOfClass:[NSDictionary class]]) return false;
  const auto keys = keysOf(domain);
  auto* former = [NSMutableArray array];
  if (keys) [former addObjectsFromArray:(__bridge NSArray*)keys.get()];
  [former removeObjectsInArray:contents.allKeys];
  CFPreferencesSetMultiple((__bridge CFDictionaryRef)contents, (__bridge CFArrayRef)former, domain,
                           kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
  return CFPreferencesSynchronize(domain, kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
}

bool read(CFStringRef domain) {
  const auto keys = keysOf(domain);
  if (!keys) return true;
  const auto contents = CFOwned<CFDictionaryRef>::adopt(CFPreferencesCopyMultiple(
      keys.get(), domain, kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
  NSData* data =
      [NSPropertyListSerialization dataWithPropertyList:(__bridge NSDictionary*)contents.get()
                                                 format:NSPropertyListBinaryFormat_v1_0
                                                options:0
                                                  error:nil];
  return [NSFileHandle.fileHandleWithStandardOutput writeData:data error:nil];
}

}  // namespace
}  // namespace vembrix

int main(int, char**) {
  @autoreleasepool {
    NSArray<NSString*>* arguments = NSProcessInfo.processInfo.arguments;
    if (arguments.count != 3) return 2;
    const auto domain = (__bridge CFStringRef)arguments[2];
    const bool writes = [arguments[1] isEqualToString:@"write"];
    return (writes ? vembrix::write(domain) : vembrix::read(domain)) ? 0 : 1;
  }
}
