#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace vembrix {

/// One Space as the window server reports it.
struct SpaceInfo {
  /// The window server's managed id.
  std::uint64_t spaceID = 0;
  /// Stable over restarts: the key of the Space's name, colours and heat.
  std::string uuid;
  /// The display it belongs to; "Main" where that has no identifier.
  std::string displayUUID;
  /// 0 for an ordinary desktop, other values for full-screen and other Spaces.
  std::int64_t type = 0;

  [[nodiscard]] bool isDesktop() const { return type == 0; }

  bool operator==(const SpaceInfo&) const = default;
};

}  // namespace vembrix

template <>
struct std::hash<vembrix::SpaceInfo> {
  std::size_t operator()(const vembrix::SpaceInfo& space) const noexcept {
    std::size_t seed = 0;
    const auto mix = [&seed](std::size_t value) {
      seed ^= value + 0x9e3779b97f4a7c15U + (seed << 6U) + (seed >> 2U);
    };
    mix(std::hash<std::uint64_t>{}(space.spaceID));
    mix(std::hash<std::string>{}(space.uuid));
    mix(std::hash<std::string>{}(space.displayUUID));
    mix(std::hash<std::int64_t>{}(space.type));
    return seed;
  }
};
