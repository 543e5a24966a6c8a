#pragma once

#include <gmock/gmock.h>

#include <vector>

#include "support/SignTest.h"

namespace vembrix {

/// The collection behaviour of a label at rest, and of the active one during a show.
inline constexpr std::uint64_t kAtRest = 324;
inline constexpr std::uint64_t kOutOfTheWay = 72;

/// Four desktops with their labels, the first one active.
class SignVisibilityTest : public SignTest {
 protected:
  auto all(double active, double others) {
    return testing::ElementsAre(testing::DoubleEq(active), testing::DoubleEq(others),
                                testing::DoubleEq(others), testing::DoubleEq(others));
  }
  auto atRest() { return all(0, 0.78); }
  /// Shows all labels and waits half a second. Begins 100 ms after a tick, so that no tick
  /// interrupts the fade at the end of the show.
  void show() {
    beginWithAllLabels();
    advance(100);
    controller_->showAll();
    advance(500);
  }
  std::vector<std::uint64_t> behaviors() const {
    std::vector<std::uint64_t> values;
    for (std::size_t place = 0; place < 4; ++place)
      values.push_back(label(place).collectionBehavior());
    return values;
  }
};

}  // namespace vembrix
