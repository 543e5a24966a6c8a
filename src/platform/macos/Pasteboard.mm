#import "platform/Pasteboard.h"

#import <AppKit/AppKit.h>

#import "platform/macos/support/Conversions.h"
#include "platform/portable/Utf8.h"

namespace vembrix {
namespace {

/// Owns nothing: the pasteboard's contents belong to the system.
class GeneralPasteboard : public Pasteboard {
 public:
  bool setString(std::string_view text) override {
    @autoreleasepool {
      const std::optional<std::string> repaired = repairedUtf8(text);
      const std::string_view valid = repaired ? *repaired : text;
      // The type's own encoding is UTF-8. As a string, a log of many megabytes would be converted
      // to UTF-16 and back.
      NSData* data = [NSData dataWithBytes:valid.data() length:valid.size()];
      NSPasteboard* pasteboard = NSPasteboard.generalPasteboard;
      [pasteboard clearContents];
      return [pasteboard setData:data forType:NSPasteboardTypeString];
    }
  }
};

}  // namespace

Pasteboard& Pasteboard::general() {
  static auto& pasteboard = *new GeneralPasteboard;
  return pasteboard;
}

}  // namespace vembrix
