#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/UserDefaults.h"

namespace vembrix {

/// User defaults in memory. Each domain is kept as the bytes of a property-list
/// file would be, so that a test can put in anything that a disk may hold.
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

  /// Replaces a domain by a dictionary, as another program would.
  void writeDomain(std::string_view domain, PropertyList contents);
  /// Replaces a domain by raw bytes, of whatever kind.
  void writeDomainBytes(std::string_view domain, std::string bytes);
  /// The dictionary of a domain; null when there is none or it cannot be read.
  PropertyList readDomain(std::string_view domain) const;

  /// Calls of set() since the start, those included that changed nothing.
  int writeCount() const { return writeCount_; }
  /// Answers in place of the key list of every domain, until null.
  void overrideKeyList(PropertyList answer) { keyListOverride_ = std::move(answer); }
};

}  // namespace vembrix
