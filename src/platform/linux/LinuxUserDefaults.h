#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "platform/UserDefaults.h"
#include "platform/linux/DefaultsFile.h"
#include "platform/linux/DefaultsStore.h"

namespace vembrix {

/// Settings as XML property lists, one file per domain.
class LinuxUserDefaults : public UserDefaults {
 public:
  /// The store behind UserDefaults::standard().
  static LinuxUserDefaults& shared();

  LinuxUserDefaults();

  PropertyList object(std::string_view key) const override { return application_.object(key); }
  Token beginReading() override;
  void set(std::string_view key, const PropertyList& value) override {
    application_.set(key, value);
  }
  /// Of the application's own domain, what the file holds.
  PropertyList keyList(std::string_view domain) const override;
  PropertyList object(std::string_view key, std::string_view domain) const override;

  /// Returns when all that was set is in its file, or when that has failed, after a few
  /// seconds at the latest. For the end of the process.
  void finish() { application_.finish(); }

 private:
  std::filesystem::path pathOf(std::string_view domain) const;
  /// Null for what cannot be the name of a domain.
  DefaultsFile* find(std::string_view domain) const;

  std::filesystem::path directory_;
  // What was read last; not part of what a user of the settings sees.
  mutable DefaultsStore application_;
  mutable std::map<std::string, DefaultsFile, std::less<>> others_;
};

}  // namespace vembrix
