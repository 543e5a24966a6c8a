#pragma once

#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

/// The information dictionary of the program's bundle.
class Bundle {
 public:
  static const Bundle& main();

  virtual ~Bundle() = default;

  /// Returns the value under the key, unconverted; null when there is none. Known keys:
  /// "CFBundleShortVersionString" and "VembrixBuildDate".
  [[nodiscard]] virtual PropertyList infoValue(std::string_view key) const = 0;
};

}  // namespace vembrix
