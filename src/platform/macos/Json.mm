#import "platform/Json.h"

#import "platform/macos/support/Conversions.h"
#import "platform/portable/Utf8.h"

namespace vembrix {

std::optional<std::string> encodeJson(const PropertyList& value) {
  @autoreleasepool {
    id object = nativeObject(value, NativeForm::Json);
    // Says no to a top level of another kind; the encoder would throw.
    if (!object || ![NSJSONSerialization isValidJSONObject:object]) return std::nullopt;
    NSData* data = [NSJSONSerialization dataWithJSONObject:object options:0 error:nil];
    if (!data) return std::nullopt;
    return std::string(static_cast<const char*>(data.bytes), data.length);
  }
}

std::optional<PropertyList> decodeJson(std::string_view text) {
  // Foundation guesses the encoding and would take UTF-16 or UTF-32 as well. Both
  // show in the bytes: JSON has no NUL.
  if (text.find('\0') != std::string_view::npos || !isUtf8(text)) return std::nullopt;
  @autoreleasepool {
    // Without options a top level of another kind than array or object is an
    // error.
    id object = [NSJSONSerialization JSONObjectWithData:borrowedData(text) options:0 error:nil];
    if (!object) return std::nullopt;
    return propertyListFrom(object);
  }
}

}  // namespace vembrix
