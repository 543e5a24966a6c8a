// A settings file is either read or rejected, and a change leaves its other entries unchanged.

#include "Expect.h"
#include "platform/linux/defaults/XmlPropertyList.h"

namespace vembrix {
namespace {

const PropertyList::Dictionary* valuesOf(
    const std::variant<PropertyList, PropertyListFault>& read) {
  const auto* value = std::get_if<PropertyList>(&read);
  return value ? value->asDictionary() : nullptr;
}

/// Compares values; NaN, which equals nothing, counts as equal to itself.
bool areEqual(const PropertyList& a, const PropertyList& b) {
  return a == b || writePropertyList(a) == writePropertyList(b);
}

void tryToChange(std::string_view bytes, const PropertyList::Dictionary* before,
                 const PropertyList& value) {
  const std::optional<std::string> changed = changedPropertyList(bytes, "Key", value);
  expect(changed.has_value() == (before != nullptr));
  if (!changed || changed->size() > kPropertyListLimit) return;
  const auto read = readPropertyList(*changed);
  const PropertyList::Dictionary* after = valuesOf(read);
  expect(after != nullptr);
  expect(after->contains("Key") == !value.isNull());
  std::size_t others = 0;
  for (const auto& [key, kept] : *before) {
    if (key == "Key") continue;
    others += 1;
    expect(after->contains(key) && areEqual(after->find(key)->second, kept));
  }
  expect(after->size() == others + (value.isNull() ? 0 : 1));
}

}  // namespace
}  // namespace vembrix

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vembrix;
  const std::string_view bytes = textOf(data, size);
  const auto read = readPropertyList(bytes);
  const PropertyList::Dictionary* values = valuesOf(read);
  tryToChange(bytes, values, "new & old");
  tryToChange(bytes, values, PropertyList::Dictionary{{"a", PropertyList::Array{1, true}}});
  tryToChange(bytes, values, {});
  return 0;
}
