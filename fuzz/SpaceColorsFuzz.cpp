// The stored colours of the Spaces: JSON that any program may have written.

#include "Expect.h"
#include "platform/Json.h"
#include "platform/UserDefaults.h"
#include "settings/PreferencesStore.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vembrix;
  UserDefaults::standard().set("SpaceColors", PropertyList::Data(data, data + size));
  PreferencesStore& store = PreferencesStore::shared();
  const SpaceColors colors = store.spaceColors();
  store.setSpaceColors(colors);
  if (!colors.empty()) expect(store.spaceColors() == colors);

  const std::optional<PropertyList> json = decodeJson(textOf(data, size));
  if (!json) return 0;
  const std::optional<std::string> text = encodeJson(*json);
  expect(text && decodeJson(*text) == json);
  return 0;
}
