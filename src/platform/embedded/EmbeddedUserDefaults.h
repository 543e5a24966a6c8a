#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/UserDefaults.h"

namespace vembrix {

/// User defaults in memory. A test can put in whatever a disk may hold,
/// also what cannot be read. Reading, and storing what is stored
/// already, allocates nothing.
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

  /// Replaces a domain by a dictionary, as another program would; null removes
  /// the domain, and a value of another kind stands for what cannot be read.
  void writeDomain(std::string_view domain, const PropertyList& contents);
  /// The dictionary of a domain; null when there is none or it cannot be read.
  PropertyList readDomain(std::string_view domain) const;

  /// Calls of set() since the start, those included that changed nothing.
  int writeCount() const { return writeCount_; }
  /// Answers in place of the key list of every domain, until null.
  void overrideKeyList(PropertyList answer) { keyListOverride_ = std::move(answer); }

 private:
  /// Null for a domain that is missing or that cannot be read.
  const PropertyList::Dictionary* find(std::string_view domain) const;

  /// Nothing stands for contents that cannot be read.
  std::map<std::string, std::optional<PropertyList::Dictionary>, std::less<>> domains_;
  PropertyList keyListOverride_;
  int writeCount_ = 0;
};

}  // namespace vembrix
