#include "platform/macos/support/OtherProgram.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#import "platform/macos/support/CFOwned.h"
#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

/// Runs the tool to its end with the bytes as its standard input; returns its standard output.
NSData* runDomainTool(NSString* verb, NSString* domain, NSData* input) {
  auto* task = [[NSTask alloc] init];
  auto* in = [NSPipe pipe];
  auto* out = [NSPipe pipe];
  task.executableURL = [NSURL fileURLWithPath:@VEMBRIX_DOMAIN_TOOL];
  task.arguments = @[ verb, domain ];
  task.standardInput = in;
  task.standardOutput = out;
  NSError* error = nil;
  if (![task launchAndReturnError:&error]) {
    ADD_FAILURE() << utf8String(error.localizedDescription);
    return nil;
  }
  // The tool writes only after it has read everything.
  EXPECT_TRUE([in.fileHandleForWriting writeData:input error:nil]);
  EXPECT_TRUE([in.fileHandleForWriting closeAndReturnError:nil]);
  NSData* output = [out.fileHandleForReading readDataToEndOfFileAndReturnError:nil];
  [task waitUntilExit];
  EXPECT_EQ(task.terminationStatus, 0);
  return output;
}

void removeDomain(CFStringRef domain) {
  const auto keys = CFOwned<CFArrayRef>::adopt(
      CFPreferencesCopyKeyList(domain, kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
  if (keys) {
    CFPreferencesSetMultiple(nullptr, keys.get(), domain, kCFPreferencesCurrentUser,
                             kCFPreferencesAnyHost);
  }
  CFPreferencesSynchronize(domain, kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
}

}  // namespace

void other_program::writeDomain(std::string_view domain, const PropertyList& contents) {
  @autoreleasepool {
    NSData* data = [NSPropertyListSerialization
        dataWithPropertyList:nativeObject(contents, NativeForm::PropertyList)
                      format:NSPropertyListBinaryFormat_v1_0
                     options:0
                       error:nil];
    runDomainTool(@"write", nativeString(domain), data);
  }
}

PropertyList other_program::readDomain(std::string_view domain) {
  @autoreleasepool {
    // Values that this process has set may not be stored yet.
    CFPreferencesAppSynchronize(kCFPreferencesCurrentApplication);
    NSData* data = runDomainTool(@"read", nativeString(domain), [NSData data]);
    if (data.length == 0) return {};
    return propertyListFrom([NSPropertyListSerialization propertyListWithData:data
                                                                      options:0
                                                                       format:nil
                                                                        error:nil]);
  }
}

TestDomains::TestDomains() { remove(); }
TestDomains::~TestDomains() { remove(); }

std::string TestDomains::application() const {
  return utf8String(NSBundle.mainBundle.bundleIdentifier);
}

void TestDomains::remove() const {
  @autoreleasepool {
    removeDomain((__bridge CFStringRef)nativeString(application()));
    removeDomain((__bridge CFStringRef)nativeString(kOther));
  }
}

}  // namespace vembrix
