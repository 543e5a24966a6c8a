#pragma once

#include <cstddef>
#include <iterator>
#include <span>

#include "spaces/SpaceInfo.h"

namespace vembrix {

/// The ordinary desktops in a list of Spaces, in its order. A range that allocates nothing and is
/// valid as long as the list does not change.
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
