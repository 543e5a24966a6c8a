#import "platform/TextSize.h"

#import "platform/macos/support/Conversions.h"

namespace vembrix {

Size textSize(std::string_view text, const Font& font) {
  @autoreleasepool {
    NSDictionary* attributes = @{NSFontAttributeName : nativeFont(font)};
    // Labels show line breaks, which names should not have, as blanks.
    NSString* line = [[nativeString(text)
        componentsSeparatedByCharactersInSet:NSCharacterSet.newlineCharacterSet]
        componentsJoinedByString:@" "];
    if (line.length == 0) return {0, [@" " sizeWithAttributes:attributes].height};
    return sizeFrom([line sizeWithAttributes:attributes]);
  }
}

}  // namespace vembrix
