#include "platform/UserDefaults.h"

#include <pwd.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <utility>

#include "platform/linux/defaults/LinuxUserDefaults.h"
#include "platform/linux/defaults/XmlPropertyList.h"

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

}  // namespace

LinuxUserDefaults& LinuxUserDefaults::shared() {
  // Never destroyed: settings may be read until the very end.
  static auto& defaults = *new LinuxUserDefaults;
  return defaults;
}

UserDefaults& UserDefaults::standard() {
  return LinuxUserDefaults::shared();
}

LinuxUserDefaults::LinuxUserDefaults()
    : directory_(configurationDirectory() / "vembrix"), application_(pathOf(kApplicationDomain)) {
  // A program under a limit of file sizes gets an error, and lives. The settings are the
  // first thing that is used.
  std::signal(SIGXFSZ, SIG_IGN);
  // Initialises what Qt needs for dates, so that it outlives this object.
  writePropertyList(PropertyList::Date());
  std::atexit([] { shared().finish(); });
}

Token LinuxUserDefaults::beginReading() {
  application_.hold();
  return Token([this] { application_.letGo(); });
}

PropertyList LinuxUserDefaults::keyList(std::string_view domain) const {
  if (domain == kApplicationDomain) application_.finish();
  DefaultsFile* file = find(domain);
  const PropertyList::Dictionary* contents = file ? file->contents() : nullptr;
  if (!contents) return {};
  PropertyList::Array keys;
  keys.reserve(contents->size());
  for (const auto& [key, value] : *contents) keys.emplace_back(key);
  return keys;
}

PropertyList LinuxUserDefaults::object(std::string_view key, std::string_view domain) const {
  if (domain == kApplicationDomain) return object(key);
  DefaultsFile* file = find(domain);
  return file ? file->object(key) : PropertyList();
}

std::filesystem::path LinuxUserDefaults::pathOf(std::string_view domain) const {
  return directory_ / (std::string(domain) + ".plist");
}

DefaultsFile* LinuxUserDefaults::find(std::string_view domain) const {
  if (!isDomainName(domain)) return nullptr;
  auto found = others_.find(domain);
  if (found == others_.end()) {
    // Faults in another application's settings are not logged.
    DefaultsFile file(pathOf(domain), DefaultsFile::Log::Nothing);
    found = others_.emplace(std::string(domain), std::move(file)).first;
  }
  return &found->second;
}

}  // namespace vembrix
