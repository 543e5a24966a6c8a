#include "labels/SignModelDesktop.h"

#include <algorithm>

#include "platform/InputMonitor.h"
#include "platform/Screens.h"
#include "platform/UserDefaults.h"

namespace vembrix::model {
namespace {

constexpr Palette kPalettes[] = {
    {"Ember", {0, 0, 0, 0.78}, {0.84, 0.19, 0.05, 0.88}, {1, 0.64, 0.24, 1}},
    {"Ice", {0.02, 0.04, 0.1, 0.78}, {0.05, 0.36, 0.78, 0.88}, {0.36, 0.9, 1, 1}},
    {"Violet", {0.05, 0.01, 0.09, 0.78}, {0.52, 0.09, 0.7, 0.88}, {1, 0.35, 0.85, 1}},
    {"Mono", {0, 0, 0, 0.78}, {0.93, 0.93, 0.93, 0.92}, {1, 1, 1, 1}},
};

PropertyList stored(std::string_view key) {
  return UserDefaults::standard().object(key);
}

bool covers(const PropertyList& window, const std::vector<Screen>& screens) {
  const std::string* owner = window["kCGWindowOwnerName"].asString();
  if (!owner || *owner != "Dock") return false;
  const std::optional<double> width = window["kCGWindowBounds"]["Width"].number();
  const std::optional<double> height = window["kCGWindowBounds"]["Height"].number();
  if (!width || !height) return false;
  return std::ranges::any_of(screens, [&](const Screen& screen) {
    return *width >= 0.9 * screen.frame.width && *height >= 0.8 * screen.frame.height;
  });
}

}  // namespace

std::vector<Space> listedSpaces() {
  std::vector<Space> spaces;
  const PropertyList answer = WindowServer::shared().CGSCopyManagedDisplaySpaces(1);
  if (!answer.asArray()) return spaces;
  for (const PropertyList& display : *answer.asArray()) {
    const std::string* identifier = display["Display Identifier"].asString();
    const PropertyList::Array* entries = display["Spaces"].asArray();
    if (!identifier || !entries) continue;
    for (const PropertyList& entry : *entries) {
      spaces.push_back({.id = static_cast<SpaceID>(*entry["ManagedSpaceID"].asInteger()),
                        .uuid = *entry["uuid"].asString(),
                        .display = *identifier,
                        .type = *entry["type"].asInteger()});
    }
  }
  return spaces;
}

SpaceID activeSpace() {
  return WindowServer::shared().CGSGetActiveSpace(1);
}

Rect mainScreen() {
  const Screens& screens = Screens::shared();
  return screens.mainScreen() ? screens.mainScreen()->frame : screens.all().at(0).frame;
}

Point mouse() {
  return InputMonitor::shared().mouseLocation();
}

bool isMissionControlOpen() {
  const PropertyList answer = WindowServer::shared().CGWindowListCopyWindowInfo(17);
  const PropertyList::Array* windows = answer.asArray();
  if (!windows) return false;
  // One entry of another kind invalidates the list.
  for (const PropertyList& window : *windows) {
    if (!window.asDictionary()) return false;
  }
  const std::vector<Screen>& screens = Screens::shared().all();
  return std::ranges::any_of(*windows,
                             [&](const PropertyList& window) { return covers(window, screens); });
}

bool isOn(std::string_view key) {
  const PropertyList value = stored(key);
  if (const bool* truth = value.asBool()) return *truth;
  // The number 0 means off; all other values are no switch or mean on.
  return value.number() != 0.0;
}

double number(std::string_view key, double otherwise) {
  return stored(key).number().value_or(otherwise);
}

std::map<std::string, std::string> names() {
  std::map<std::string, std::string> all;
  const PropertyList value = stored("SpaceNames");
  if (!value.asDictionary()) return all;
  for (const auto& [uuid, name] : *value.asDictionary()) {
    if (!name.asString()) return {};
    all[uuid] = *name.asString();
  }
  return all;
}

std::vector<std::string> strings(std::string_view key) {
  std::vector<std::string> all;
  const PropertyList value = stored(key);
  if (!value.asArray()) return all;
  for (const PropertyList& entry : *value.asArray()) {
    if (!entry.asString()) return {};
    all.push_back(*entry.asString());
  }
  return all;
}

const Palette& heatPalette() {
  const PropertyList value = stored("HeatPaletteName");
  const std::string* name = value.asString();
  const auto* const found =
      std::ranges::find(kPalettes, name ? std::string_view(*name) : "Ember", &Palette::name);
  return found == std::end(kPalettes) ? kPalettes[0] : *found;
}

}  // namespace vembrix::model
