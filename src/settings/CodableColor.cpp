#include "settings/CodableColor.h"

namespace vembrix {

PropertyList encode(const CodableColor& color) {
  return PropertyList::Dictionary{
      {"red", color.red}, {"green", color.green}, {"blue", color.blue}, {"alpha", color.alpha}};
}

PropertyList encode(const SpaceColorConfig& config) {
  return PropertyList::Dictionary{{"foreground", encode(config.foreground)},
                                  {"background", encode(config.background)}};
}

std::optional<CodableColor> decodeCodableColor(const PropertyList& value) {
  const auto red = value["red"].number();
  const auto green = value["green"].number();
  const auto blue = value["blue"].number();
  const auto alpha = value["alpha"].number();
  if (!red || !green || !blue || !alpha) return std::nullopt;
  return CodableColor{*red, *green, *blue, *alpha};
}

std::optional<SpaceColorConfig> decodeSpaceColorConfig(const PropertyList& value) {
  const auto foreground = decodeCodableColor(value["foreground"]);
  const auto background = decodeCodableColor(value["background"]);
  if (!foreground || !background) return std::nullopt;
  return SpaceColorConfig{*foreground, *background};
}

}  // namespace vembrix
