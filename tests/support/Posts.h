#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/NotificationCenter.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"

namespace vembrix {

/// Records the product's notifications of the default center in the order of posting.
class Posts {
 public:
  Posts() {
    for (std::size_t i = 0; i < kNames.size(); ++i) {
      observations_[i] = NotificationCenter::defaultCenter().addObserver(
          kNames[i], [this, i] { names_.emplace_back(kNames[i]); });
    }
  }

  const std::vector<std::string>& names() const { return names_; }
  void clear() { names_.clear(); }

 private:
  static constexpr std::array kNames = {SpaceManager::didChange, SpaceManager::activeChanged,
                                        PreferencesStore::didChange};

  std::vector<std::string> names_;
  std::array<Observation, kNames.size()> observations_;
};

}  // namespace vembrix
