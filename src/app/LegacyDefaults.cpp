#include "app/LegacyDefaults.h"

#include <string>
#include <string_view>

#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"

namespace vembrix {
namespace {

constexpr std::string_view kDidMigrate = "DidMigrateLegacyDefaults";
constexpr std::string_view kLegacyDomain = "com.zorbalintes.app";

void copyMissing(UserDefaults& defaults, const PropertyList::Array& keys) {
  for (const PropertyList& entry : keys) {
    const std::string& key = *entry.asString();
    if (!defaults.object(key).isNull()) continue;
    const PropertyList value = defaults.object(key, kLegacyDomain);
    if (!value.isNull()) defaults.set(key, value);
  }
}

}  // namespace

void migrateLegacyDefaultsIfNeeded() {
  UserDefaults& defaults = UserDefaults::standard();
  if (defaults.object(kDidMigrate).boolean() == true) return;
  const PropertyList answer = defaults.keyList(kLegacyDomain);
  if (const PropertyList::Array* keys = answer.asArrayOfStrings()) {
    copyMissing(defaults, *keys);
    // Counts the keys found, not those copied.
    logLine("migrated " + std::to_string(keys->size()) + " settings from legacy domain");
  }
  defaults.set(kDidMigrate, true);
}

}  // namespace vembrix
