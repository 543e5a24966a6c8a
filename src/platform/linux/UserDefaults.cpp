#include "platform/UserDefaults.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <utility>

#include "platform/linux/DefaultsFile.h"

namespace vembrix {
namespace {

constexpr std::string_view kApplicationDomain = "com.vembrix.app";

std::filesystem::path homeDirectory() {
  const char* home = std::getenv("HOME");
  if (home && *home == '/') return home;
  const passwd* user = getpwuid(geteuid());
  return user && user->pw_dir ? user->pw_dir : "/";
}

/// Where all applications of the user keep their settings. A relative path in
/// the environment is invalid and counts as none.
std::filesystem::path configurationDirectory() {
  const char* directory = std::getenv("XDG_CONFIG_HOME");
  return directory && *directory == '/' ? directory : homeDirectory() / ".config";
}

bool isDomainName(std::string_view name) {
  using namespace std::literals;
  return !name.empty() && name.find_first_of("/\0"sv) == std::string_view::npos &&
         name.find("..") == std::string_view::npos;
}

/// Settings as XML property lists, one file per domain.
class FileUserDefaults : public UserDefaults {
 public:
  FileUserDefaults()
      : directory_(configurationDirectory() / "vembrix"),
        application_(pathOf(kApplicationDomain), DefaultsFile::Log::Failures) {}

  PropertyList object(std::string_view key) const override { return application_.object(key); }

  Token beginReading() override {
    application_.hold();
    return Token([this] { application_.letGo(); });
  }

  void set(std::string_view key, const PropertyList& value) override {
    application_.set(key, value);
  }

  PropertyList keyList(std::string_view domain) const override {
    DefaultsFile* file = find(domain);
    const PropertyList::Dictionary* contents = file ? file->contents() : nullptr;
    if (!contents) return {};
    PropertyList::Array keys;
    keys.reserve(contents->size());
    for (const auto& [key, value] : *contents) keys.emplace_back(key);
    return keys;
  }

  PropertyList object(std::string_view key, std::string_view domain) const override {
    DefaultsFile* file = find(domain);
    return file ? file->object(key) : PropertyList();
  }

 private:
  std::filesystem::path pathOf(std::string_view domain) const {
    return directory_ / (std::string(domain) + ".plist");
  }

  /// Null for what cannot be the name of a domain.
  DefaultsFile* find(std::string_view domain) const {
    if (domain == kApplicationDomain) return &application_;
    if (!isDomainName(domain)) return nullptr;
    auto found = others_.find(domain);
    if (found == others_.end()) {
      // What is wrong with another application's settings is its own business.
      DefaultsFile file(pathOf(domain), DefaultsFile::Log::Nothing);
      found = others_.emplace(std::string(domain), std::move(file)).first;
    }
    return &found->second;
  }

  std::filesystem::path directory_;
  // What was read last; not part of what a user of the settings sees.
  mutable DefaultsFile application_;
  mutable std::map<std::string, DefaultsFile, std::less<>> others_;
};

}  // namespace

UserDefaults& UserDefaults::standard() {
  // Never destroyed: settings may be read until the very end.
  static auto& defaults = *new FileUserDefaults;
  return defaults;
}

}  // namespace vembrix
