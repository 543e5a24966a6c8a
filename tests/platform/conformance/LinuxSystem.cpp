#include <gtest/gtest.h>
#include <syslog.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <optional>

#include "platform/Application.h"
#include "platform/PropertyListSerialization.h"
#include "platform/conformance/SystemUnderTest.h"
#include "platform/linux/PrivateBus.h"
#include "platform/linux/PrivateDisplay.h"
#include "platform/linux/TemporaryDirectory.h"

namespace vembrix {
namespace {

/// What the process has sent to the system's log.
class SentLines {
 public:
  static SentLines& shared() {
    static SentLines lines;
    return lines;
  }

  void add(const char* format, std::va_list arguments) {
    std::array<char, 1 << 16> line{};
    std::vsnprintf(line.data(), line.size(), format, arguments);
    const std::lock_guard lock(mutex_);
    lines_.emplace_back(line.data());
  }

  std::vector<std::string> all() {
    const std::lock_guard lock(mutex_);
    return lines_;
  }

 private:
  std::mutex mutex_;
  std::vector<std::string> lines_;
};

/// What the suite at hand needs of the system; starting what it does not need
/// would only cost time.
bool suiteIsOneOf(std::initializer_list<std::string_view> names) {
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  const std::string_view suite = test ? test->test_suite_name() : "";
  return std::ranges::any_of(
      names, [&](std::string_view name) { return suite.find(name) != std::string_view::npos; });
}

void setVariable(const char* name, const std::string& value) {
  setenv(name, value.c_str(), 1);
}

class LinuxSystem : public SystemUnderTest {
 public:
  LinuxSystem() {
    for (const char* name : {"WAYLAND_DISPLAY", "QT_QPA_PLATFORMTHEME", "SESSION_MANAGER"}) {
      unsetenv(name);
    }
    setVariable("XDG_CONFIG_HOME", home_.path());
    if (suiteIsOneOf({"Accessibility", "Screens", "WindowServer"})) {
      display_.emplace();
      display_->startWindowManager();
      setVariable("VEMBRIX_DESKTOP", "x11");
    } else {
      setVariable("VEMBRIX_DESKTOP", "embedded");
      setVariable("QT_QPA_PLATFORM", "offscreen");
    }
    if (suiteIsOneOf({"Application"})) {
      bus_.emplace();
    } else {
      PrivateBus::pointNowhere();
    }
    Application::shared();
    if (bus_) portal_.emplace(bus_->connect("portal"), FakePortal::Age::Current);
  }

  void runFor(Duration duration) override {
    QEventLoop loop;
    QTimer::singleShot(std::chrono::ceil<std::chrono::milliseconds>(duration), Qt::PreciseTimer,
                       &loop, &QEventLoop::quit);
    loop.exec();
  }

  bool runUntil(const std::function<bool()>& condition, Duration limit) override {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
      if (std::chrono::steady_clock::now() >= end) return false;
      // Sooner where something happens sooner.
      QTimer wake;
      wake.start(1);
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
  }

  void writeDomain(std::string_view domain, const PropertyList& contents) override {
    writeFile(domain, xmlPropertyList(contents).value());
  }

  PropertyList readDomain(std::string_view domain) override {
    std::ifstream file(pathOf(domain), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    return parsePropertyList(bytes).value_or(PropertyList());
  }

  void damageDomain(std::string_view domain) override {
    writeFile(domain, "<plist><dict><key>cut off");
  }

  std::vector<std::string> logLines() override { return SentLines::shared().all(); }

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

 private:
  std::filesystem::path pathOf(std::string_view domain) const {
    return home_.path() / "vembrix" / (std::string(domain) + ".plist");
  }

  void writeFile(std::string_view domain, const std::string& bytes) const {
    const std::filesystem::path path = pathOf(domain);
    std::filesystem::create_directories(path.parent_path());
    // As programs that care write such files: a reader never sees half of one.
    const std::filesystem::path temporary = path.string() + ".new";
    std::ofstream(temporary, std::ios::binary) << bytes;
    std::filesystem::rename(temporary, path);
  }

  TemporaryDirectory home_;
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

// In place of the C library's: the lines of a test are no business of the
// system's log. The second is what fortified builds call.

extern "C" void syslog(int /*priority*/, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  vembrix::SentLines::shared().add(format, arguments);
  va_end(arguments);
}

extern "C" void __syslog_chk(int /*priority*/,
                             int /*flag*/,  // NOLINT(bugprone-reserved-identifier)
                             const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  vembrix::SentLines::shared().add(format, arguments);
  va_end(arguments);
}
