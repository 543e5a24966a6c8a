#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

#include "platform/Application.h"
#include "platform/conformance/SystemUnderTest.h"
#include "platform/linux/defaults/LinuxUserDefaults.h"
#include "platform/linux/defaults/XmlPropertyList.h"
#include "platform/linux/support/PrivateBus.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/SentLines.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

/// Returns whether the present suite is one of these; starting what it does not need would cost
/// time.
bool suiteIsOneOf(std::initializer_list<std::string_view> names) {
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  const std::string_view suite = test ? test->test_suite_name() : "";
  return std::ranges::any_of(
      names, [&](std::string_view name) { return suite.find(name) != std::string_view::npos; });
}

class LinuxSystem : public SystemUnderTest {
 public:
  LinuxSystem() {
    if (suiteIsOneOf({"Accessibility", "DockSwipe", "EventTap", "InputMonitor", "Screens",
                      "WindowServer"})) {
      display_.emplace();
      display_->startWindowManager();
      TestSession::setVariable("VEMBRIX_DESKTOP", "x11");
    } else {
      TestSession::useNoScreen();
    }
    if (suiteIsOneOf({"Application"})) bus_.emplace();
    Application::shared();
    if (bus_) portal_.emplace(bus_->connect("portal"), FakePortal::Age::Current);
  }

  void runFor(Duration duration) override { vembrix::runFor(duration); }
  bool runUntil(const std::function<bool()>& condition, Duration limit) override {
    return vembrix::runUntil(condition, limit);
  }

  std::string applicationDomain() override { return "com.vembrix.app"; }

  void writeDomain(std::string_view domain, const PropertyList& contents) override {
    // The other program writes after this process's values are stored.
    LinuxUserDefaults::shared().finish();
    writeFile(domain, writePropertyList(contents).value());
  }

  PropertyList readDomain(std::string_view domain) override {
    LinuxUserDefaults::shared().finish();
    std::ifstream file(pathOf(domain), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    const auto read = readPropertyList(bytes);
    const auto* value = std::get_if<PropertyList>(&read);
    return value ? *value : PropertyList();
  }

  void damageDomain(std::string_view domain) override {
    LinuxUserDefaults::shared().finish();
    writeFile(domain, "<plist><dict><key>cut off");
    // A file that was written just now could be incomplete.
    constexpr std::chrono::seconds kAge{10};
    const std::filesystem::path path = pathOf(domain);
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - kAge);
  }

  std::vector<std::string> logLines() override { return sentLines(); }

  void setSpaceCount(int count) override {
    EXPECT_TRUE(display_->client().setDesktopCount(static_cast<std::uint32_t>(count)));
  }

  void goToSpace(WindowServer::SpaceID space) override {
    EXPECT_TRUE(display_->client().goToDesktop(static_cast<std::uint32_t>(space - 1)));
  }

  void setAppearance(Appearance appearance) override {
    portal_->setPreference(appearance == Appearance::Dark ? 1 : 2);
  }

  void resizeScreen(double width, double height) override {
    EXPECT_TRUE(display_->client().resizeScreen(static_cast<std::uint16_t>(width),
                                                static_cast<std::uint16_t>(height)));
  }

  void showWindow(const std::string& owner, const Size& size) override {
    EXPECT_TRUE(display_->client().showWindow(owner, static_cast<std::uint16_t>(size.width),
                                              static_cast<std::uint16_t>(size.height)));
  }

  std::string dockName() override { return "skippy-xd"; }

  void press(EventMask type) override {
    switch (type) {
      case LeftMouseDown:
        display_->client().clickButton(1);
        break;
      case RightMouseDown:
        display_->client().clickButton(3);
        break;
      case OtherMouseDown:
        display_->client().clickButton(2);
        break;
      case KeyDown:
        display_->client().pressKey();
        break;
      default:
        FAIL() << "nothing that can be pressed";
    }
  }

  void moveMouse(Point location) override {
    const int height = display_->client().geometry(display_->client().root()).height;
    display_->client().movePointer(static_cast<std::int16_t>(location.x),
                                   static_cast<std::int16_t>(height - location.y));
  }

 private:
  std::filesystem::path pathOf(std::string_view domain) const {
    return session_.settings() / "vembrix" / (std::string(domain) + ".plist");
  }

  void writeFile(std::string_view domain, const std::string& bytes) const {
    const std::filesystem::path path = pathOf(domain);
    std::filesystem::create_directories(path.parent_path());
    // Writes like careful programs do: a reader never sees an incomplete file.
    const std::filesystem::path temporary = path.string() + ".new";
    std::ofstream(temporary, std::ios::binary) << bytes;
    std::filesystem::rename(temporary, path);
  }

  TestSession session_;
  std::optional<PrivateDisplay> display_;
  std::optional<PrivateBus> bus_;
  std::optional<FakePortal> portal_;
};

}  // namespace

SystemUnderTest& SystemUnderTest::shared() {
  static LinuxSystem system;
  return system;
}

}  // namespace vembrix
