// The stored colours of Spaces.

#include "platform/Json.h"
#include "platform/NotificationCenter.h"
#include "settings/PreferencesStore.h"

namespace vembrix {
namespace {

constexpr std::string_view kSpaceColors = "SpaceColors";

SpaceColors decode(const PropertyList& stored) {
  const PropertyList::Data* data = stored.asData();
  if (!data) return {};
  const std::optional<PropertyList> json =
      decodeJson({reinterpret_cast<const char*>(data->data()), data->size()});
  const PropertyList::Dictionary* dictionary = json ? json->asDictionary() : nullptr;
  if (!dictionary) return {};
  SpaceColors colors;
  for (const auto& [uuid, value] : *dictionary) {
    const std::optional<SpaceColorConfig> config = decodeSpaceColorConfig(value);
    if (!config) return {};
    colors.emplace(uuid, *config);
  }
  return colors;
}

std::optional<PropertyList> encodeColors(const SpaceColors& colors) {
  PropertyList::Dictionary dictionary;
  for (const auto& [uuid, config] : colors) dictionary.emplace(uuid, encode(config));
  const std::optional<std::string> text = encodeJson(PropertyList(std::move(dictionary)));
  if (!text) return std::nullopt;
  return PropertyList(PropertyList::Data(text->begin(), text->end()));
}

/// The last stored bytes and their value. A menu or a set of labels reads the colours of every
/// Space in turn; equal bytes are decoded only once.
struct Decoded {
  PropertyList stored;
  SpaceColors colors;
};

}  // namespace

const SpaceColors& PreferencesStore::spaceColors() const {
  static Decoded last;
  PropertyList stored = ud_.object(kSpaceColors);
  if (stored != last.stored) {
    last.colors = decode(stored);
    last.stored = std::move(stored);
  }
  return last.colors;
}

void PreferencesStore::setSpaceColors(const SpaceColors& colors) {
  if (const auto encoded = encodeColors(colors)) ud_.set(kSpaceColors, *encoded);
  NotificationCenter::defaultCenter().post(didChange);
}

}  // namespace vembrix
