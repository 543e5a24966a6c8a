#include "platform/WindowServer.h"

#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/Application.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/session/X11Services.h"
#include "platform/linux/x11/WindowList.h"

namespace vembrix {
namespace {

class X11WindowServer : public WindowServer {
 public:
  explicit X11WindowServer(X11Desktop& desktop) : desktop_(desktop) {}

  // There is only one connection; its number has no meaning.
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
    for (const SpaceID& space : spaces) {
      if (desktop_.isKnown(space)) desktop_.windows().addToSpaces(windows, std::span(&space, 1));
    }
  }

  void CGSRemoveWindowsFromSpaces(ConnectionID /*connection*/,
                                  std::span<const WindowNumber> windows,
                                  std::span<const SpaceID> spaces) override {
    desktop_.windows().removeFromSpaces(windows, spaces);
  }

  PropertyList CGSCopySpacesForWindows(ConnectionID /*connection*/, std::uint32_t /*mask*/,
                                       std::span<const WindowNumber> windows) override {
    if (windows.size() == 1) {
      const SpaceWindows::Window* window = desktop_.windows().find(windows.front());
      const bool isInOne = window && (window->collectionBehavior & CanJoinAllSpaces) == 0 &&
                           window->spaces.size() == 1;
      if (isInOne) return onlyIn(window->spaces.front());
    }
    PropertyList::Array answer;
    for (const SpaceID space : desktop_.windows().spacesOf(windows, desktop_.spaceIDs())) {
      answer.emplace_back(static_cast<std::int64_t>(space));
    }
    return answer;
  }

  PropertyList CGWindowListCopyWindowInfo(std::uint32_t options) override {
    if (!windows_) {
      // The list of windows is updated by the application's event loop.
      Application::shared();
      windows_.emplace(desktop_);
    }
    return windows_->list(options);
  }

 private:
  /// Returns the usual answer for a label, created once.
  const PropertyList& onlyIn(SpaceID space) {
    PropertyList& answer = answers_[space];
    if (answer.isNull()) answer = PropertyList::Array{static_cast<std::int64_t>(space)};
    return answer;
  }

  X11Desktop& desktop_;
  std::unordered_map<SpaceID, PropertyList> answers_;
  /// The list of windows, followed from the first query on.
  std::optional<WindowList> windows_;
};

}  // namespace

WindowServer& X11Services::windowServer() {
  static auto& server = *new X11WindowServer(desktop_);
  return server;
}

WindowServer& WindowServer::shared() {
  return chosenDesktop().services.windowServer();
}

}  // namespace vembrix
