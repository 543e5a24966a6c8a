#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include "platform/Application.h"
#include "platform/conformance/SystemUnderTest.h"
#import "platform/macos/support/Conversions.h"
#include "platform/macos/support/OtherProgram.h"
#include "platform/macos/support/RunLoop.h"
#include "platform/macos/support/StandardErrorLines.h"

namespace vembrix {
namespace {

/// The user's own session. What a program may change there without asking is changed and restored;
/// a suite that needs more cannot run here.
class MacSystem : public SystemUnderTest {
 public:
  MacSystem() {
    StandardErrorLines::shared();
    Application::shared();
  }

  void runFor(Duration duration) override { vembrix::runFor(duration); }
  bool runUntil(const std::function<bool()>& condition, Duration limit) override {
    return vembrix::runUntil(condition, limit);
  }

  std::string applicationDomain() override { return domains_.application(); }
  void writeDomain(std::string_view domain, const PropertyList& contents) override {
    other_program::writeDomain(domain, contents);
  }
  PropertyList readDomain(std::string_view domain) override {
    return other_program::readDomain(domain);
  }
  void damageDomain(std::string_view) override {
    FAIL() << "the preferences system keeps to itself where and when it stores a domain";
  }

  std::vector<std::string> logLines() override { return StandardErrorLines::shared().lines(); }

  void setSpaceCount(int) override { FAIL() << "no program can add or remove Spaces"; }
  void goToSpace(WindowServer::SpaceID) override { FAIL() << kUsersDesktop; }

  /// Changes the appearance of this application alone, which AppKit reports like a change of the
  /// system's.
  void setAppearance(Appearance appearance) override {
    [NSApplication sharedApplication].appearance = nativeAppearance(appearance);
  }

  void resizeScreen(double, double) override { FAIL() << kUsersDesktop; }
  void showWindow(const std::string&, const Size&) override { FAIL() << kUsersDesktop; }
  std::string dockName() override { return "Dock"; }
  void press(EventMask) override { FAIL() << kUsersDesktop; }
  void moveMouse(Point) override { FAIL() << kUsersDesktop; }

 private:
  static constexpr const char* kUsersDesktop = "the desktop is the user's";

  TestDomains domains_;
};

}  // namespace

SystemUnderTest& SystemUnderTest::shared() {
  static MacSystem system;
  return system;
}

}  // namespace vembrix
