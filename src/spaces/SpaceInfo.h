#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <span>
#include <string>

namespace vembrix {

/// One Space as the window server reports it.
struct SpaceInfo {
  /// The window server's managed id.
  std::uint64_t spaceID = 0;
  /// Stable over restarts: the key of the Space's name, colours and heat.
  std::string uuid;
  /// The display that it belongs to; "Main" if that has no identifier.
  std::string displayUUID;
  /// 0 for an ordinary desktop, other values for full-screen and other Spaces.
  std::int64_t type = 0;

  [[nodiscard]] bool isDesktop() const { return type == 0; }

  bool operator==(const SpaceInfo&) const = default;
};

/// The ordinary desktops in a list of Spaces, in the list's order. Iterating allocates nothing.
/// Valid as long as the list does not change.
class DesktopView {
 public:
  class Iterator {
   public:
    // The names that std::iterator_traits looks for.
    // NOLINTBEGIN(readability-identifier-naming)
    using iterator_category = std::forward_iterator_tag;
    using value_type = SpaceInfo;
    using difference_type = std::ptrdiff_t;
    using pointer = const SpaceInfo*;
    using reference = const SpaceInfo&;
    // NOLINTEND(readability-identifier-naming)

    Iterator() = default;
    /// `place` and `end` belong to the same list.
    Iterator(pointer place, pointer end) : place_(place), end_(end) { skipOthers(); }

    reference operator*() const { return *place_; }
    pointer operator->() const { return place_; }
    Iterator& operator++() {
      ++place_;
      skipOthers();
      return *this;
    }
    Iterator operator++(int) {
      const Iterator former = *this;
      ++*this;
      return former;
    }
    bool operator==(const Iterator& other) const { return place_ == other.place_; }

   private:
    void skipOthers() {
      while (place_ != end_ && !place_->isDesktop()) ++place_;
    }

    pointer place_ = nullptr;
    pointer end_ = nullptr;
  };

  explicit DesktopView(std::span<const SpaceInfo> spaces) : spaces_(spaces) {}

  [[nodiscard]] Iterator begin() const { return {spaces_.data(), pastTheLast()}; }
  [[nodiscard]] Iterator end() const { return {pastTheLast(), pastTheLast()}; }

 private:
  [[nodiscard]] const SpaceInfo* pastTheLast() const { return spaces_.data() + spaces_.size(); }

  std::span<const SpaceInfo> spaces_;
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
