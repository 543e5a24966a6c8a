#pragma once

#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

/// What the program's bundle says of itself.
class Bundle {
 public:
  static const Bundle& main();

  virtual ~Bundle() = default;

  /// The value of the information dictionary under the key, untouched; null
  /// when it has none, or when there is no dictionary. Known keys:
  /// "CFBundleShortVersionString" and "VembrixBuildDate".
  [[nodiscard]] virtual PropertyList infoValue(std::string_view key) const = 0;
};

}  // namespace vembrix
