#import "platform/Bundle.h"

#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

/// Owns nothing: the bundle is Foundation's and lives as long as the process.
class MainBundle : public Bundle {
 public:
  PropertyList infoValue(std::string_view key) const override {
    @autoreleasepool {
      // objectForInfoDictionaryKey: might return a localised value.
      return propertyListFrom(NSBundle.mainBundle.infoDictionary[nativeString(key)]);
    }
  }
};

}  // namespace

const Bundle& Bundle::main() {
  static const auto& bundle = *new MainBundle;
  return bundle;
}

}  // namespace vembrix
