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

/// Returns the folder of the user's settings. A relative path in the environment is invalid and
/// ignored.
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
  // Under a limit of file sizes, writing then fails with an error instead of a signal. Set here
  // because the settings are used first.
  std::signal(SIGXFSZ, SIG_IGN);
  // Makes Qt create its data for dates now, so that it is destroyed after this object.
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
