#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/Color.h"
#include "platform/PropertyList.h"

namespace vembrix {

/// A stored colour: sRGB components, nominally 0 to 1, never clamped.
struct CodableColor {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 0;

  [[nodiscard]] Srgb srgb() const { return {red, green, blue, alpha}; }
  static CodableColor of(const Srgb& color) {
    return {color.red, color.green, color.blue, color.alpha};
  }

  bool operator==(const CodableColor&) const = default;
};

/// The two colours of a Space: the text's in foreground mode, the fill's in
/// background mode.
struct SpaceColorConfig {
  CodableColor foreground;
  CodableColor background;

  bool operator==(const SpaceColorConfig&) const = default;
};

/// Colours by the uuid of the Space.
using SpaceColors = std::map<std::string, SpaceColorConfig, std::less<>>;

// The stored form: dictionaries of numbers by the fields' names. Decoding returns empty if a field
// is missing or of another kind, and ignores unknown fields.

PropertyList encode(const CodableColor& color);
PropertyList encode(const SpaceColorConfig& config);
std::optional<CodableColor> decodeCodableColor(const PropertyList& value);
std::optional<SpaceColorConfig> decodeSpaceColorConfig(const PropertyList& value);

// The stored colours of all Spaces: JSON as data. Encoding returns empty for numbers that JSON
// cannot hold; a value in which anything is malformed decodes to no colours.

std::optional<PropertyList> encode(const SpaceColors& colors);
SpaceColors decodeSpaceColors(const PropertyList& value);

}  // namespace vembrix
