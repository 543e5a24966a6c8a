#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "platform/UserDefaults.h"
#include "platform/linux/defaults/DefaultsFile.h"
#include "platform/linux/defaults/DefaultsStore.h"

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
  /// For the application's own domain, the keys in the file.
  PropertyList keyList(std::string_view domain) const override;
  PropertyList object(std::string_view key, std::string_view domain) const override;

  /// Waits, for a few seconds at most, until all changes are in the file or that has failed. For
  /// the end of the process.
  void finish() { application_.finish(); }

 private:
  std::filesystem::path pathOf(std::string_view domain) const;
  /// Null where `domain` is no valid name.
  DefaultsFile* find(std::string_view domain) const;

  std::filesystem::path directory_;
  // Mutable as a cache of the file.
  mutable DefaultsStore application_;
  mutable std::map<std::string, DefaultsFile, std::less<>> others_;
};

}  // namespace vembrix
