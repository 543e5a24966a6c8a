#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

#include "support/SignTest.h"

namespace vembrix {

/// The labels with the calls that place them in Spaces.
class SignPlacementTest : public SignTest {
 protected:
  using Kind = TestDesktop::WindowSpacesCall::Kind;

  struct Call {
    Kind kind{};
    std::vector<WindowServer::WindowNumber> windows;
    std::vector<SpaceID> spaces;
    bool operator==(const Call&) const = default;
  };

  void watchCalls() {
    desktop_.watchWindowSpaces([this](const TestDesktop::WindowSpacesCall& call) {
      calls_.push_back({call.kind,
                        {call.windows.begin(), call.windows.end()},
                        {call.spaces.begin(), call.spaces.end()}});
    });
  }
  long count(Kind kind) const { return std::ranges::count(calls_, kind, &Call::kind); }

  void moveLabel(const RecordingSignWindow& window, std::vector<SpaceID> spaces) {
    desktop_.windows().move(window.windowNumber(), std::move(spaces));
  }
  void reconcile() { queue_.advance(std::chrono::seconds(5)); }
  /// Returns the frame of a label of that size on the first screen.
  static Rect centeredOnMain(double width, double height) {
    return {720 - width / 2, 450 - height / 2, width, height};
  }

  std::vector<Call> calls_;
};

}  // namespace vembrix
