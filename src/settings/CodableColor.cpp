#include "settings/CodableColor.h"

#include "platform/Json.h"

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

std::optional<PropertyList> encode(const SpaceColors& colors) {
  PropertyList::Dictionary dictionary;
  for (const auto& [uuid, config] : colors) dictionary.emplace(uuid, encode(config));
  const std::optional<std::string> text = encodeJson(PropertyList(std::move(dictionary)));
  if (!text) return std::nullopt;
  return PropertyList(PropertyList::Data(text->begin(), text->end()));
}

SpaceColors decodeSpaceColors(const PropertyList& value) {
  const PropertyList::Data* data = value.asData();
  if (!data) return {};
  const std::optional<PropertyList> json =
      decodeJson({reinterpret_cast<const char*>(data->data()), data->size()});
  const PropertyList::Dictionary* dictionary = json ? json->asDictionary() : nullptr;
  if (!dictionary) return {};
  SpaceColors colors;
  for (const auto& [uuid, entry] : *dictionary) {
    const std::optional<SpaceColorConfig> config = decodeSpaceColorConfig(entry);
    if (!config) return {};
    colors.emplace(uuid, *config);
  }
  return colors;
}

}  // namespace vembrix
