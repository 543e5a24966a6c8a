#import "platform/PropertyListSerialization.h"

#import "platform/macos/Conversions.h"

namespace vembrix {

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
    return propertyListFrom(object);
  }
}

}  // namespace vembrix
