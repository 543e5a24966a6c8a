#include "platform/embedded/desktop/TestDesktop.h"

#include <utility>

namespace vembrix {

/// A desktop's window server that gives the answers of a test, if there are any.
class TestDesktop::ScriptedWindowServer : public WindowServer {
 public:
  explicit ScriptedWindowServer(WindowServer& server) : server_(server) {}

  ConnectionID CGSMainConnectionID() override { return server_.CGSMainConnectionID(); }
  PropertyList CGSCopyManagedDisplaySpaces(ConnectionID connection) override {
    if (managedDisplaySpaces) return *managedDisplaySpaces;
    return server_.CGSCopyManagedDisplaySpaces(connection);
  }
  SpaceID CGSGetActiveSpace(ConnectionID connection) override {
    return activeSpace ? *activeSpace : server_.CGSGetActiveSpace(connection);
  }
  void CGSManagedDisplaySetCurrentSpace(ConnectionID connection, std::string_view display,
                                        SpaceID space) override {
    server_.CGSManagedDisplaySetCurrentSpace(connection, display, space);
  }
  bool canPlaceWindows() const override { return canPlace && server_.canPlaceWindows(); }

  void CGSAddWindowsToSpaces(ConnectionID connection, std::span<const WindowNumber> windows,
                             std::span<const SpaceID> spaces) override {
    report(WindowSpacesCall::Kind::Add, windows, spaces);
    server_.CGSAddWindowsToSpaces(connection, windows, spaces);
  }
  void CGSRemoveWindowsFromSpaces(ConnectionID connection, std::span<const WindowNumber> windows,
                                  std::span<const SpaceID> spaces) override {
    report(WindowSpacesCall::Kind::Remove, windows, spaces);
    server_.CGSRemoveWindowsFromSpaces(connection, windows, spaces);
  }
  PropertyList CGSCopySpacesForWindows(ConnectionID connection, std::uint32_t mask,
                                       std::span<const WindowNumber> windows) override {
    report(WindowSpacesCall::Kind::Copy, windows, {});
    if (spacesForWindows) return *spacesForWindows;
    return server_.CGSCopySpacesForWindows(connection, mask, windows);
  }
  PropertyList CGWindowListCopyWindowInfo(std::uint32_t options) override {
    return windowList ? *windowList : server_.CGWindowListCopyWindowInfo(options);
  }

  // Empty if the desktop's own answers apply.

  std::optional<PropertyList> managedDisplaySpaces;
  std::optional<SpaceID> activeSpace;
  std::optional<PropertyList> spacesForWindows;
  std::optional<PropertyList> windowList;

  bool canPlace = true;
  std::function<void(const WindowSpacesCall&)> watcher;

 private:
  void report(WindowSpacesCall::Kind kind, std::span<const WindowNumber> windows,
              std::span<const SpaceID> spaces) const {
    if (watcher) watcher({kind, windows, spaces});
  }

  WindowServer& server_;
};

TestDesktop& TestDesktop::shared() {
  static TestDesktop desktop;
  return desktop;
}

EmbeddedDesktop& EmbeddedDesktop::shared() {
  return TestDesktop::shared();
}

TestDesktop::TestDesktop()
    : windowServer_(std::make_unique<ScriptedWindowServer>(EmbeddedDesktop::windowServer())) {}

TestDesktop::~TestDesktop() = default;

void TestDesktop::overrideManagedDisplaySpaces(std::optional<PropertyList> answer) {
  windowServer_->managedDisplaySpaces = std::move(answer);
}

void TestDesktop::overrideActiveSpace(std::optional<SpaceID> answer) {
  windowServer_->activeSpace = answer;
}

void TestDesktop::overrideSpacesForWindows(std::optional<PropertyList> answer) {
  windowServer_->spacesForWindows = std::move(answer);
}

void TestDesktop::overrideWindowList(std::optional<PropertyList> answer) {
  windowServer_->windowList = std::move(answer);
}

void TestDesktop::setCanPlaceWindows(bool can) {
  windowServer_->canPlace = can;
}

void TestDesktop::watchWindowSpaces(std::function<void(const WindowSpacesCall&)> watcher) {
  windowServer_->watcher = std::move(watcher);
}

WindowServer& TestDesktop::windowServer() {
  return *windowServer_;
}

std::unique_ptr<DockSwipeEvent> TestDesktop::makeSwipeEvent() {
  if (eventsToRefuse_ == 0) return EmbeddedDesktop::makeSwipeEvent();
  eventsToRefuse_ -= 1;
  return nullptr;
}

std::unique_ptr<EventTap> TestDesktop::makeTap(EventTap::Handler handler) {
  return refusesTaps_ ? nullptr : EmbeddedDesktop::makeTap(std::move(handler));
}

void TestDesktop::swipeCompleted(ISSDirection direction, Dock::Arrival arrival) {
  if (swipesToLose_ > 0) {
    swipesToLose_ -= 1;
    return;
  }
  completedSwipes_ += 1;
  EmbeddedDesktop::swipeCompleted(direction, arrival);
}

}  // namespace vembrix
