#pragma once

#include <array>
#include <map>
#include <set>

#include "platform/embedded/desktop/TestDesktop.h"
#include "platform/embedded/faces/RecordingSignWindow.h"

namespace vembrix {

/// The labels' windows on the embedded desktop and the Space of each: the one to which the window
/// is first added. To be created before the first label.
class LabelWindows {
 public:
  using SpaceID = WindowServer::SpaceID;

  LabelWindows() {
    desktop_.watchWindowSpaces([this](const TestDesktop::WindowSpacesCall& call) {
      if (call.kind != TestDesktop::WindowSpacesCall::Kind::Add) return;
      owners_.try_emplace(call.windows.front(), call.spaces.front());
    });
  }
  ~LabelWindows() { desktop_.watchWindowSpaces({}); }
  LabelWindows(const LabelWindows&) = delete;
  LabelWindows& operator=(const LabelWindows&) = delete;

  [[nodiscard]] SpaceID ownerOf(const RecordingSignWindow& window) const {
    return owners_.at(window.windowNumber());
  }
  /// Returns the Spaces that hold the window.
  [[nodiscard]] static std::set<SpaceID> spacesOf(const RecordingSignWindow& window) {
    const auto found =
        EmbeddedDesktop::shared().windows().spacesOf(std::array{window.windowNumber()}, {});
    return {found.begin(), found.end()};
  }

 private:
  TestDesktop& desktop_ = TestDesktop::shared();
  std::map<WindowServer::WindowNumber, SpaceID> owners_;
};

}  // namespace vembrix
