#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/UserDefaults.h"

namespace vembrix {

/// User defaults in memory. A test can store whatever a disk may hold, unreadable contents
/// included. Reading, and storing an unchanged value, allocates nothing.
class EmbeddedUserDefaults : public UserDefaults {
 public:
  /// The application's own domain.
  static constexpr std::string_view kApplicationDomain = "com.vembrix.app";

  /// The store behind UserDefaults::standard().
  static EmbeddedUserDefaults& shared();

  PropertyList object(std::string_view key) const override;
  void set(std::string_view key, const PropertyList& value) override;
  PropertyList keyList(std::string_view domain) const override;
  PropertyList object(std::string_view key, std::string_view domain) const override;

  /// Replaces a domain by a dictionary, as another program would; null removes the domain, and a
  /// value of another kind stands for unreadable contents.
  void writeDomain(std::string_view domain, const PropertyList& contents);
  /// The dictionary of a domain; null if there is none or it cannot be read.
  PropertyList readDomain(std::string_view domain) const;

  /// Number of calls of set(), including those without a change.
  int writeCount() const { return writeCount_; }
  /// Overrides the key list of every domain; null ends that.
  void overrideKeyList(PropertyList answer) { keyListOverride_ = std::move(answer); }

 private:
  /// Null for a domain that is missing or unreadable.
  const PropertyList::Dictionary* find(std::string_view domain) const;

  /// Empty stands for unreadable contents.
  std::map<std::string, std::optional<PropertyList::Dictionary>, std::less<>> domains_;
  PropertyList keyListOverride_;
  int writeCount_ = 0;
};

}  // namespace vembrix
