#include "platform/linux/defaults/DefaultsStore.h"

#include <optional>
#include <string>
#include <utility>

#include "platform/SystemLog.h"
#include "platform/linux/defaults/XmlPropertyList.h"

namespace vembrix {

DefaultsStore::DefaultsStore(std::filesystem::path path)
    : path_(std::move(path)), file_(path_, DefaultsFile::Log::Failures), writer_(path_) {}

PropertyList DefaultsStore::object(std::string_view key) {
  // The order matters: a change that the writer no longer has is in the file.
  const std::optional<DefaultsWriter::Change> change = writer_.change(key);
  PropertyList held = stored(key);
  if (!change) return held;
  if (!file_.isCertain() || !change->isOverruledBy(held)) return change->value;
  writer_.withdraw(key);
  return held;
}

void DefaultsStore::set(std::string_view key, const PropertyList& value) {
  if (holds(key, value)) return;
  // Must not overwrite what other programs have written since.
  file_.lookAgain();
  if (holds(key, value)) return;
  if (!value.isNull()) {
    const auto xml = writePropertyList(PropertyList::Dictionary{{std::string(key), value}});
    if (!xml || xml->size() > kPropertyListLimit) {
      logLine("UserDefaults: cannot store " + std::string(key) + " in " + path_.string() + ": " +
              (xml ? "too large" : "no property list"));
      return;
    }
  }
  std::optional<PropertyList> held;
  do {
    held = stored(key);
    if (!file_.isCertain()) held.reset();
  } while (!writer_.set(key, value, std::move(held), seenWrites_));
}

bool DefaultsStore::holds(std::string_view key, const PropertyList& value) {
  return object(key) == value && (file_.isCertain() || value.isNull());
}

PropertyList DefaultsStore::stored(std::string_view key) {
  const int writes = writer_.writeCount();
  if (std::exchange(seenWrites_, writes) != writes) file_.lookAgain();
  return file_.object(key);
}

}  // namespace vembrix
