#include "platform/conformance/SystemUnderTest.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/services/EmbeddedBackgroundWork.h"
#include "platform/embedded/services/EmbeddedLog.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "platform/embedded/services/EmbeddedUserDefaults.h"

namespace vembrix {
namespace {

class EmbeddedSystem : public SystemUnderTest {
 public:
  EmbeddedSystem() { desktop_.setAnnouncesSpaces(true); }

  void runFor(Duration duration) override {
    EmbeddedBackgroundWork::shared().run();
    queue_.advance(duration);
  }

  bool runUntil(const std::function<bool()>& condition, Duration limit) override {
    constexpr Duration kStep = std::chrono::milliseconds(1);
    EmbeddedBackgroundWork::shared().run();
    queue_.runPending();
    for (Duration passed{}; !condition(); passed += kStep) {
      if (passed >= limit) return false;
      queue_.advance(kStep);
    }
    return true;
  }

  std::string applicationDomain() override { return "com.vembrix.app"; }

  void writeDomain(std::string_view domain, const PropertyList& contents) override {
    defaults_.writeDomain(domain, contents);
  }
  PropertyList readDomain(std::string_view domain) override { return defaults_.readDomain(domain); }
  void damageDomain(std::string_view domain) override { defaults_.writeDomain(domain, "damaged"); }

  std::vector<std::string> logLines() override { return EmbeddedLog::shared().lines(); }

  void setSpaceCount(int count) override {
    desktop_.setSpaceCount(static_cast<std::size_t>(count));
  }
  void goToSpace(WindowServer::SpaceID space) override { desktop_.activate(space); }
  void setAppearance(Appearance appearance) override { desktop_.setAppearance(appearance); }
  void resizeScreen(double width, double height) override {
    desktop_.setDisplayFrame("Main", {0, 0, width, height});
  }

  void showWindow(const std::string& owner, const Size& size) override {
    desktop_.addWindow(owner, size);
  }
  std::string dockName() override { return "Dock"; }
  void press(EventMask type) override { desktop_.input().send(type); }
  void moveMouse(Point location) override { desktop_.input().moveMouse(location); }

 private:
  EmbeddedDesktop& desktop_ = EmbeddedDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  EmbeddedUserDefaults& defaults_ = EmbeddedUserDefaults::shared();
};

}  // namespace

SystemUnderTest& SystemUnderTest::shared() {
  static EmbeddedSystem system;
  return system;
}

}  // namespace vembrix
