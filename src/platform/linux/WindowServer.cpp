#include "platform/WindowServer.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "platform/Application.h"
#include "platform/embedded/EmbeddedDesktop.h"
#include "platform/linux/ChosenDesktop.h"
#include "platform/linux/X11Desktop.h"
#include "platform/linux/X11WindowDesktops.h"
#include "platform/linux/X11WindowList.h"

namespace vembrix {
namespace {

class X11WindowServer : public WindowServer {
 public:
  explicit X11WindowServer(X11Desktop& desktop) : desktop_(desktop) {}

  // There is one connection, whatever it is called.
  ConnectionID CGSMainConnectionID() override { return 1; }

  PropertyList CGSCopyManagedDisplaySpaces(ConnectionID /*connection*/) override {
    return desktop_.managedDisplaySpaces();
  }

  SpaceID CGSGetActiveSpace(ConnectionID /*connection*/) override { return desktop_.activeSpace(); }

  void CGSManagedDisplaySetCurrentSpace(ConnectionID /*connection*/, std::string_view display,
                                        SpaceID space) override {
    if (display == X11Desktop::kDisplay) desktop_.activate(space);
  }

  bool canPlaceWindows() const override { return true; }

  void CGSAddWindowsToSpaces(ConnectionID /*connection*/, std::span<const WindowNumber> windows,
                             std::span<const SpaceID> spaces) override {
    const auto last = std::find_if(spaces.rbegin(), spaces.rend(),
                                   [this](SpaceID space) { return desktop_.isKnown(space); });
    if (last == spaces.rend()) return;
    for (const WindowNumber window : windows) {
      // What is in all of them is there already.
      if (desktopOf(window) == X11WindowDesktops::kAll) continue;
      windowDesktops().move(window, desktopOfSpace(*last));
    }
  }

  void CGSRemoveWindowsFromSpaces(ConnectionID /*connection*/,
                                  std::span<const WindowNumber> windows,
                                  std::span<const SpaceID> spaces) override {
    for (const WindowNumber window : windows) {
      // A window is in one Space or in all of them: only the latter can be left.
      if (desktopOf(window) != X11WindowDesktops::kAll) continue;
      const SpaceID count = desktop_.spaceCount().value_or(0);
      for (SpaceID space = 1; space <= count; ++space) {
        if (std::ranges::find(spaces, space) != spaces.end()) continue;
        windowDesktops().move(window, desktopOfSpace(space));
        break;
      }
    }
  }

  PropertyList CGSCopySpacesForWindows(ConnectionID /*connection*/, std::uint32_t /*mask*/,
                                       std::span<const WindowNumber> windows) override {
    if (windows.size() == 1) return spacesOf(windows.front());
    PropertyList::Array all;
    for (const WindowNumber window : windows) {
      const PropertyList spaces = spacesOf(window);
      for (const PropertyList& space : *spaces.asArray()) {
        if (std::ranges::find(all, space) == all.end()) all.push_back(space);
      }
    }
    return all;
  }

  PropertyList CGWindowListCopyWindowInfo(std::uint32_t options) override {
    if (!windows_) {
      // Its connection needs the application's event loop.
      Application::shared();
      windows_.emplace(X11Connection::open(), desktop_);
    }
    return windows_->list(options);
  }

 private:
  static X11WindowDesktops& windowDesktops() {
    // It lives on the application's events.
    Application::shared();
    return X11WindowDesktops::shared();
  }
  static std::optional<std::uint32_t> desktopOf(WindowNumber window) {
    return windowDesktops().desktop(window);
  }
  static std::uint32_t desktopOfSpace(SpaceID space) {
    return static_cast<std::uint32_t>(space - 1);
  }

  /// An array, empty for a window that is in none or unknown.
  PropertyList spacesOf(WindowNumber window) {
    const std::optional<std::uint32_t> desktop = desktopOf(window);
    if (!desktop) return noSpaces_;
    if (*desktop == X11WindowDesktops::kAll) return allSpacesOnce();
    // A window manager may have it on a desktop that is gone.
    if (*desktop >= X11Desktop::kMaxDesktops) return noSpaces_;
    if (*desktop >= oneSpace_.size()) oneSpace_.resize(*desktop + std::size_t{1});
    PropertyList& answer = oneSpace_[*desktop];
    if (answer.isNull()) answer = PropertyList::Array{std::int64_t{*desktop} + 1};
    return answer;
  }

  [[nodiscard]] PropertyList allSpacesOnce() const {
    PropertyList::Array all;
    const std::int64_t count = desktop_.spaceCount().value_or(0);
    for (std::int64_t space = 1; space <= count; ++space) all.emplace_back(space);
    return all;
  }

  X11Desktop& desktop_;
  /// Answers to give again: no Space, and each one alone, by its desktop.
  const PropertyList noSpaces_ = PropertyList::Array();
  std::vector<PropertyList> oneSpace_;
  /// Followed from the first question on.
  std::optional<X11WindowList> windows_;
};

WindowServer& choose() {
  X11Desktop* x11 = chosenDesktop().x11;
  if (!x11) return EmbeddedDesktop::shared().windowServer();
  // Never destroyed: Qt, which feeds it, is not either.
  static auto& server = *new X11WindowServer(*x11);
  return server;
}

}  // namespace

WindowServer& WindowServer::shared() {
  static WindowServer& server = choose();
  return server;
}

}  // namespace vembrix
