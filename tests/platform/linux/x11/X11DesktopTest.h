#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Application.h"
#include "platform/NotificationCenter.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/TestSession.h"
#include "platform/linux/x11/X11Desktop.h"

namespace vembrix {

/// Returns the bytes of a property, four for each value.
inline std::string cardinals(const std::vector<std::uint32_t>& values) {
  return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(std::uint32_t)};
}

/// A display with a window manager from the start, or without.
class X11DesktopTest : public testing::Test {
 protected:
  enum class WindowManager { Running, None };

  X11DesktopTest() : X11DesktopTest(WindowManager::Running) {}

  explicit X11DesktopTest(WindowManager windowManager) {
    TestSession::useNoScreen();
    Application::shared();
    if (windowManager == WindowManager::Running) display_.startWindowManager();
    desktop_ = std::make_unique<X11Desktop>(X11Connection::open());
    desktop_->follow();
    // Changes that are announced when the application starts do not count.
    changes_ = 0;
  }

  /// Returns the number of Spaces; empty without a list.
  [[nodiscard]] std::optional<std::size_t> count() const {
    const PropertyList answer = desktop_->managedDisplaySpaces();
    if (answer.isNull()) return std::nullopt;
    return (*answer.asArray())[0]["Spaces"].asArray()->size();
  }

  bool runUntilCount(std::optional<std::size_t> wanted) {
    return runUntil([&] { return count() == wanted; });
  }
  bool runUntilActive(X11Desktop::SpaceID wanted) {
    return runUntil([&] { return desktop_->activeSpace() == wanted; });
  }

  /// Returns the name of a desktop as other programs see it; empty if it has none.
  std::string shownName(std::size_t index) {
    const std::vector<std::string> names = client().desktopNames();
    return index < names.size() ? names[index] : std::string();
  }
  bool runUntilShown(std::size_t index, std::string_view wanted) {
    return runUntil([&] { return shownName(index) == wanted; });
  }

  void setRoot(std::string_view name, const X11Client::Property& property) {
    client().setProperty(client().root(), name, property);
  }
  X11Client& client() { return display_.client(); }

  TestSession session_;
  PrivateDisplay display_;
  std::unique_ptr<X11Desktop> desktop_;
  int changes_ = 0;
  Observation observation_ = NotificationCenter::workspace().addObserver(
      notification::kActiveSpaceDidChange, [this] { changes_ += 1; });
};

}  // namespace vembrix
