#import "platform/PropertyListSerialization.h"

#include <algorithm>
#include <cstddef>

#import "platform/macos/Conversions.h"

namespace vembrix {
namespace {

/// Bytes in the binary form may stand for far more than they are, since what occurs
/// several times is there once. Foundation keeps it so; values do not.
constexpr std::size_t kUnfoldedLimit = std::size_t{64} << 20;

/// How many bytes the value takes when nothing in it is shared, beyond the limit not
/// exactly. Each container is looked at once: a value within itself there is none.
class UnfoldedSize {
 public:
  std::size_t of(id object) {
    if ([object isKindOfClass:[NSString class]])
      return kObject + static_cast<NSString*>(object).length;
    if ([object isKindOfClass:[NSData class]]) return kObject + static_cast<NSData*>(object).length;
    const bool isArray = [object isKindOfClass:[NSArray class]];
    if (!isArray && ![object isKindOfClass:[NSDictionary class]]) return kObject;
    if (NSNumber* known = [sizes_ objectForKey:object]) return known.unsignedLongValue;
    const std::size_t size = isArray ? ofElements(object) : ofEntries(object);
    [sizes_ setObject:@(size) forKey:object];
    return size;
  }

 private:
  static constexpr std::size_t kObject = 32;

  std::size_t ofElements(NSArray* array) {
    std::size_t sum = kObject;
    for (id element in array) sum = std::min(sum + of(element), kUnfoldedLimit + 1);
    return sum;
  }
  std::size_t ofEntries(NSDictionary* dictionary) {
    std::size_t sum = kObject;
    for (id key in dictionary) {
      sum = std::min(sum + of(key) + of(dictionary[key]), kUnfoldedLimit + 1);
    }
    return sum;
  }

  /// By identity.
  NSMapTable<id, NSNumber*>* const sizes_ =
      [NSMapTable mapTableWithKeyOptions:NSPointerFunctionsObjectPointerPersonality
                            valueOptions:NSPointerFunctionsStrongMemory];
};

}  // namespace

std::optional<std::string> xmlPropertyList(const PropertyList& value) {
  @autoreleasepool {
    id object = nativeObject(value, NativeForm::XmlPropertyList);
    if (!object) return std::nullopt;
    NSData* data = [NSPropertyListSerialization dataWithPropertyList:object
                                                              format:NSPropertyListXMLFormat_v1_0
                                                             options:0
                                                               error:nil];
    if (!data) return std::nullopt;
    return std::string(static_cast<const char*>(data.bytes), data.length);
  }
}

std::optional<PropertyList> parsePropertyList(std::string_view bytes) {
  @autoreleasepool {
    NSPropertyListFormat format{};
    id object = [NSPropertyListSerialization propertyListWithData:borrowedData(bytes)
                                                          options:NSPropertyListImmutable
                                                           format:&format
                                                            error:nil];
    // Foundation also reads the old text format, in which almost any text is a
    // property list.
    if (!object || format == NSPropertyListOpenStepFormat) return std::nullopt;
    if (format == NSPropertyListBinaryFormat_v1_0 && UnfoldedSize().of(object) > kUnfoldedLimit) {
      return std::nullopt;
    }
    return propertyListFrom(object);
  }
}

}  // namespace vembrix
