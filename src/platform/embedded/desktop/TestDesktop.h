#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>

#include "platform/embedded/desktop/EmbeddedDesktop.h"

namespace vembrix {

/// The embedded desktop of the tests, which can make it fail, lose swipes or give wrong answers,
/// and can watch what the program asks of it. No program ships with it. Main thread.
class TestDesktop : public EmbeddedDesktop {
 public:
  /// The desktop behind EmbeddedDesktop::shared() and the services.
  static TestDesktop& shared();

  TestDesktop();
  ~TestDesktop() override;

  /// Refuses the next `count` swipe events that this process asks for.
  void refuseSwipeEvents(int count) { eventsToRefuse_ = count; }
  /// Refuses all taps, even with the permission.
  void refuseTaps() { refusesTaps_ = true; }
  /// Makes the Dock ignore the next `count` swipes.
  void loseSwipes(int count) { swipesToLose_ = count; }
  /// Number of swipes that moved the user or reached the end of the list.
  int completedSwipes() const { return completedSwipes_; }

  // Override the window server's answers; empty to end that. Changes are not announced.

  void overrideManagedDisplaySpaces(std::optional<PropertyList> answer);
  void overrideActiveSpace(std::optional<SpaceID> answer);
  void overrideSpacesForWindows(std::optional<PropertyList> answer);
  void overrideWindowList(std::optional<PropertyList> answer);

  /// Sets whether windows can be added to and removed from Spaces; initially true.
  void setCanPlaceWindows(bool can);

  /// A program's call to the window server about windows in Spaces. The lists are valid during the
  /// call.
  struct WindowSpacesCall {
    enum class Kind { Add, Remove, Copy };
    Kind kind{};
    std::span<const WindowServer::WindowNumber> windows;
    /// Empty for a query.
    std::span<const SpaceID> spaces;
  };
  /// Sets what receives each such call before it is carried out; may be empty.
  void watchWindowSpaces(std::function<void(const WindowSpacesCall&)> watcher);

  // DesktopServices

  WindowServer& windowServer() override;
  std::unique_ptr<DockSwipeEvent> makeSwipeEvent() override;
  std::unique_ptr<EventTap> makeTap(EventTap::Handler handler) override;

 protected:
  void swipeCompleted(ISSDirection direction, Dock::Arrival arrival) override;

 private:
  class ScriptedWindowServer;

  int eventsToRefuse_ = 0;
  bool refusesTaps_ = false;
  int swipesToLose_ = 0;
  int completedSwipes_ = 0;
  std::unique_ptr<ScriptedWindowServer> windowServer_;
};

}  // namespace vembrix
