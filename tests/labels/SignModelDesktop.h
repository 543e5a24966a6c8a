#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/WindowServer.h"

/// Reads the desktop and the settings for the model of the labels, through the seam but with
/// independent code and without a cache. Main thread.
namespace vembrix::model {

using SpaceID = WindowServer::SpaceID;

struct Space {
  SpaceID id = 0;
  std::string uuid;
  std::string display;
  /// 0 for an ordinary desktop.
  std::int64_t type = 0;

  bool operator==(const Space&) const = default;
};

/// The Spaces of all displays in the window server's order, and the active one's id.
std::vector<Space> listedSpaces();
SpaceID activeSpace();

/// Points, global coordinates.
Rect mainScreen();
Point mouse();
/// Returns whether a window of the Dock covers nine tenths of the width and eight tenths of the
/// height of a screen.
bool isMissionControlOpen();

/// Returns a setting that is on unless it is stored as off.
bool isOn(std::string_view key);
/// Returns a stored number, or `otherwise`.
double number(std::string_view key, double otherwise);
/// The user's names by uuid; none if anything else is stored among them.
std::map<std::string, std::string> names();
/// The stored strings; empty if anything else is stored, or a single other value among them.
std::vector<std::string> strings(std::string_view key);

struct Palette {
  std::string_view name;
  Srgb cold;
  Srgb hot;
  Srgb rim;
};
/// The palette of the stored name, or Ember.
const Palette& heatPalette();

}  // namespace vembrix::model
