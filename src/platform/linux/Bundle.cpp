#include "platform/Bundle.h"

namespace vembrix {
namespace {

/// Linux has no bundles: the values of its dictionary are compiled in.
class LinuxBundle : public Bundle {
 public:
  PropertyList infoValue(std::string_view key) const override {
    if (key == "CFBundleShortVersionString") return VEMBRIX_VERSION;
    if (key == "VembrixBuildDate") return VEMBRIX_BUILD_DATE;
    return {};
  }
};

}  // namespace

const Bundle& Bundle::main() {
  static const LinuxBundle bundle;
  return bundle;
}

}  // namespace vembrix
