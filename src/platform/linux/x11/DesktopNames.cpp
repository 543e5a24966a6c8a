#include "platform/linux/x11/DesktopNames.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vembrix {
namespace {

std::string_view at(const std::vector<std::string>& names, std::size_t index) {
  return index < names.size() ? std::string_view(names[index]) : std::string_view();
}

/// Returns the desktops whose names differ.
std::vector<std::size_t> differences(const std::vector<std::string>& a,
                                     const std::vector<std::string>& b) {
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
    if (at(a, i) != at(b, i)) found.push_back(i);
  }
  return found;
}

}  // namespace

DesktopNames::Change DesktopNames::take(std::vector<std::string> names,
                                        Circumstances circumstances) {
  const std::vector<std::size_t> changed = differences(names_, names);
  const std::size_t before = std::exchange(names_, std::move(names)).size();
  if (changed.empty()) return {};
  if (circumstances == Circumstances::Settling || keepsItsNames_) {
    forgetOverwritten();
    return {.ownNames = true, .renamed = {}};
  }
  // A window manager that restores its own names would overwrite the user's again and again.
  keepsItsNames_ = std::ranges::all_of(changed, [this](std::size_t desktop) {
    const auto published = published_.find(desktop);
    return published != published_.end() && !published->second.own.empty() &&
           published->second.own == names_[desktop];
  });
  const bool isRename = !keepsItsNames_ && changed.size() == 1 && before == names_.size();
  if (!isRename) {
    forgetOverwritten();
    return {.ownNames = true, .renamed = {}};
  }
  const std::size_t desktop = changed.front();
  if (const auto published = published_.find(desktop); published != published_.end()) {
    published->second.name = names_[desktop];
  } else {
    published_[desktop] = {.name = names_[desktop], .own = {}};
  }
  return {.ownNames = false, .renamed = desktop};
}

void DesktopNames::forgetOverwritten() {
  std::erase_if(published_,
                [this](const auto& entry) { return at(names_, entry.first) != entry.second.name; });
}

bool DesktopNames::setName(std::size_t desktop, std::string_view name) {
  if (keepsItsNames_) return false;
  const std::string own(ownName(desktop));
  // A name that is there already was written by an earlier run.
  published_[desktop] = {.name = std::string(name), .own = own == name ? std::string() : own};
  return write(desktop, name);
}

bool DesktopNames::clearName(std::size_t desktop, std::string_view fallback) {
  const auto published = published_.find(desktop);
  const std::string own = published == published_.end() ? std::string() : published->second.own;
  published_.erase(desktop);
  if (keepsItsNames_) return false;
  return write(desktop, own.empty() ? fallback : own);
}

bool DesktopNames::write(std::size_t desktop, std::string_view name) {
  if (desktop < names_.size() && names_[desktop] == name) return false;
  if (desktop >= names_.size()) names_.resize(desktop + 1);
  names_[desktop].assign(name);
  return true;
}

std::string_view DesktopNames::ownName(std::size_t desktop) const {
  const auto published = published_.find(desktop);
  const std::string_view name = at(names_, desktop);
  const bool isPublished = published != published_.end() && published->second.name == name;
  return isPublished ? std::string_view(published->second.own) : name;
}

void DesktopNames::setWindowManager(bool keepsItsNames) {
  keepsItsNames_ = keepsItsNames;
}

std::vector<std::string> desktopNames(std::string_view property, std::size_t limit) {
  std::vector<std::string> names;
  while (!property.empty() && names.size() < limit) {
    const std::size_t end = std::min(property.find('\0'), property.size());
    names.emplace_back(property.substr(0, end));
    property.remove_prefix(std::min(end + 1, property.size()));
  }
  return names;
}

std::string desktopNamesProperty(const std::vector<std::string>& names) {
  std::string property;
  for (const std::string& name : names) property.append(name).push_back('\0');
  return property;
}

bool ownsDesktopNames(std::string_view windowManager) {
  static constexpr std::array<std::string_view, 7> kOwners = {
      "awesome", "bspwm", "herbstluftwm", "i3", "LG3D", "qtile", "spectrwm"};
  return std::ranges::find(kOwners, windowManager) != kOwners.end();
}

}  // namespace vembrix
