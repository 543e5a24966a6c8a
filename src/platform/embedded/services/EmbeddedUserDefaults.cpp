#include "platform/embedded/services/EmbeddedUserDefaults.h"

#include <algorithm>

#include "platform/SystemLog.h"

namespace vembrix {
namespace {

bool isStorable(const PropertyList& value) {
  if (value.isNull()) return false;
  if (const PropertyList::Array* array = value.asArray()) {
    return std::ranges::all_of(*array, isStorable);
  }
  if (const PropertyList::Dictionary* dictionary = value.asDictionary()) {
    return std::ranges::all_of(*dictionary,
                               [](const auto& entry) { return isStorable(entry.second); });
  }
  return true;
}

const PropertyList* entryOf(const PropertyList::Dictionary* dictionary, std::string_view key) {
  if (!dictionary) return nullptr;
  const auto entry = dictionary->find(key);
  return entry == dictionary->end() ? nullptr : &entry->second;
}

}  // namespace

EmbeddedUserDefaults& EmbeddedUserDefaults::shared() {
  static EmbeddedUserDefaults defaults;
  return defaults;
}

const PropertyList::Dictionary* EmbeddedUserDefaults::find(std::string_view domain) const {
  const auto found = domains_.find(domain);
  return found == domains_.end() || !found->second ? nullptr : &*found->second;
}

PropertyList EmbeddedUserDefaults::object(std::string_view key) const {
  return object(key, kApplicationDomain);
}

PropertyList EmbeddedUserDefaults::object(std::string_view key, std::string_view domain) const {
  const PropertyList* value = entryOf(find(domain), key);
  return value ? *value : PropertyList();
}

void EmbeddedUserDefaults::set(std::string_view key, const PropertyList& value) {
  writeCount_ += 1;
  const PropertyList* stored = entryOf(find(kApplicationDomain), key);
  if (value.isNull()) {
    if (stored) domains_.find(kApplicationDomain)->second->erase(std::string(key));
    return;
  }
  if (stored && *stored == value) return;
  if (!isStorable(value)) {
    logLine("UserDefaults: the value of " + std::string(key) + " is no property list");
    return;
  }
  auto& contents = domains_[std::string(kApplicationDomain)];
  if (!contents) contents.emplace();
  contents->insert_or_assign(std::string(key), value);
}

PropertyList EmbeddedUserDefaults::keyList(std::string_view domain) const {
  if (!keyListOverride_.isNull()) return keyListOverride_;
  const PropertyList::Dictionary* dictionary = find(domain);
  if (!dictionary) return {};
  PropertyList::Array keys;
  keys.reserve(dictionary->size());
  for (const auto& [key, value] : *dictionary) keys.emplace_back(key);
  return keys;
}

void EmbeddedUserDefaults::writeDomain(std::string_view domain, const PropertyList& contents) {
  if (contents.isNull()) {
    domains_.erase(std::string(domain));
    return;
  }
  auto& stored = domains_[std::string(domain)];
  stored.reset();
  if (const PropertyList::Dictionary* dictionary = contents.asDictionary()) stored = *dictionary;
}

PropertyList EmbeddedUserDefaults::readDomain(std::string_view domain) const {
  const PropertyList::Dictionary* dictionary = find(domain);
  return dictionary ? PropertyList(*dictionary) : PropertyList();
}

}  // namespace vembrix
