#import "platform/Json.h"

#import "platform/macos/support/Conversions.h"
#import "platform/portable/Utf8.h"

namespace vembrix {

std::optional<std::string> encodeJson(const PropertyList& value) {
  @autoreleasepool {
    id object = nativeObject(value, NativeForm::Json);
    // Rejects other kinds at the top level, for which the encoder would throw.
    if (!object || ![NSJSONSerialization isValidJSONObject:object]) return std::nullopt;
    NSData* data = [NSJSONSerialization dataWithJSONObject:object options:0 error:nil];
    if (!data) return std::nullopt;
    return std::string(static_cast<const char*>(data.bytes), data.length);
  }
}

std::optional<PropertyList> decodeJson(std::string_view text) {
  // Foundation guesses the encoding and would accept UTF-16 and UTF-32, too. These contain NUL
  // bytes, which JSON in UTF-8 does not.
  if (text.find('\0') != std::string_view::npos || !isUtf8(text)) return std::nullopt;
  @autoreleasepool {
    // Without options, it is an error if the top level is neither array nor object.
    id object = [NSJSONSerialization JSONObjectWithData:borrowedData(text) options:0 error:nil];
    if (!object) return std::nullopt;
    return propertyListFrom(object);
  }
}

}  // namespace vembrix
