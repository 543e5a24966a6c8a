#include "platform/linux/session/ChosenDesktop.h"

#include <gmock/gmock.h>

#include <QGuiApplication>
#include <chrono>
#include <cstdlib>
#include <string>

#include "platform/Application.h"
#include "platform/Screens.h"
#include "platform/WindowServer.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/linux/support/PrivateDisplay.h"
#include "platform/linux/support/SentLines.h"
#include "platform/linux/support/TestSession.h"
#include "platform/linux/x11/X11Desktop.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ChosenDesktopTest : public testing::Test {
 protected:
  ChosenDesktopTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  static void demand(const std::string& desktop) {
    TestSession::setVariable("VEMBRIX_DESKTOP", desktop);
  }
  static std::string qtPlatform() {
    Application::shared();
    return QGuiApplication::platformName().toStdString();
  }
  static std::string firstUuid() {
    WindowServer& server = WindowServer::shared();
    const PropertyList displays = server.CGSCopyManagedDisplaySpaces(server.CGSMainConnectionID());
    return *(*(*displays.asArray())[0]["Spaces"].asArray())[0]["uuid"].asString();
  }

  TestSession session_;
};

TEST_F(ChosenDesktopTest, IsX11WhereAWindowManagerRuns) {
  PrivateDisplay display;
  display.startWindowManager();
  EXPECT_EQ(qtPlatform(), "xcb");
  EXPECT_NE(chosenDesktop().x11, nullptr);
  EXPECT_EQ(firstUuid(), "x11-desktop-1");
  EXPECT_THAT(sentLines(), IsEmpty());
}

TEST_F(ChosenDesktopTest, IsX11AtOnceWhereNoWindowManagerRuns) {
  PrivateDisplay display;
  ASSERT_NE(chosenDesktop().x11, nullptr);
  EXPECT_EQ(qtPlatform(), "xcb");
  requireDesktop();
  EXPECT_TRUE(chosenDesktop().x11->managedDisplaySpaces().isNull());
  EXPECT_THAT(sentLines(), IsEmpty());

  display.startWindowManager();
  EXPECT_TRUE(runUntil([] { return chosenDesktop().x11->spaceCount() == 4U; }))
      << "followed as soon as one comes";
  EXPECT_EQ(firstUuid(), "x11-desktop-1");
}

TEST_F(ChosenDesktopTest, WithoutADisplayThereAreDesktopsForPicturesOnly) {
  TestSession::setVariable("DISPLAY", ":54321");
  EXPECT_EQ(chosenDesktop().x11, nullptr);
  EXPECT_EQ(qtPlatform(), "offscreen");
  EXPECT_EQ(Screens::shared().all()[0].frame, (Rect{0, 0, 1440, 900}));
  EXPECT_THAT(sentLines(), IsEmpty());
  EXPECT_EXIT(
      requireDesktop(), testing::ExitedWithCode(EXIT_FAILURE),
      testing::MatchesRegex("\\[Vembrix\\] no X server answers at display \":54321\": .*\n"));
}

TEST_F(ChosenDesktopTest, IsTheEmbeddedOneWhereThatIsDemanded) {
  PrivateDisplay display;
  display.startWindowManager();
  demand("embedded");
  EXPECT_EQ(chosenDesktop().x11, nullptr);
  EXPECT_EQ(qtPlatform(), "xcb");
  requireDesktop();
  EXPECT_THAT(sentLines(), IsEmpty());
}

TEST_F(ChosenDesktopTest, AllServicesAreThoseOfTheEmbeddedOneWhereThatIsChosen) {
  PrivateDisplay display;
  display.startWindowManager();
  demand("embedded");
  EmbeddedDesktop& desktop = EmbeddedDesktop::shared();
  EXPECT_EQ(&Accessibility::shared(), &desktop.accessibility());
  EXPECT_EQ(&InputMonitor::shared(), &desktop.input());
  EXPECT_EQ(&Screens::shared(), &desktop.screens());
  EXPECT_EQ(SpaceNaming::shared(), &desktop.spaceNaming());
  EXPECT_EQ(&WindowServer::shared(), &desktop.windowServer());
  EXPECT_EQ(&chosenDesktop().services.windows(), &desktop.windows());

  int events = 0;
  const auto tap = EventTap::create([&events](std::uint32_t, const TappedEvent&) { events += 1; });
  ASSERT_NE(tap, nullptr);
  tap->enable();
  desktop.swipe(ISSDirection::Right);
  EXPECT_EQ(events, 3) << "the tap";
  DockSwipeEvent::create()->post();
  EXPECT_EQ(events, 4) << "the events that are posted";
}

TEST_F(ChosenDesktopTest, TheUsersQtPlatformStands) {
  demand("embedded");
  TestSession::setVariable("QT_QPA_PLATFORM", "minimal");
  EXPECT_EQ(qtPlatform(), "minimal");
}

TEST_F(ChosenDesktopTest, TheDemandForX11ChangesNothing) {
  demand("x11");
  EXPECT_EXIT(requireDesktop(), testing::ExitedWithCode(EXIT_FAILURE),
              testing::MatchesRegex("\\[Vembrix\\] no X server answers .*\n"));
}

TEST_F(ChosenDesktopTest, AnUnknownDemandIsNoneAndSaidOnce) {
  PrivateDisplay display;
  display.startWindowManager();
  demand("wayland");
  EXPECT_NE(chosenDesktop().x11, nullptr);
  EXPECT_THAT(sentLines(), ElementsAre(HasSubstr("wayland")));
}

TEST_F(ChosenDesktopTest, AnEmptyDemandIsNone) {
  const PrivateDisplay display;
  demand("");
  EXPECT_NE(chosenDesktop().x11, nullptr);
  EXPECT_THAT(sentLines(), IsEmpty());
}

TEST_F(ChosenDesktopTest, TheProgramEndsInOneLineWhenTheServerGoes) {
  // Either connection to the server may notice first, this program's own or Qt's.
  EXPECT_EXIT(
      {
        PrivateDisplay display;
        display.startWindowManager();
        Application::shared();
        runFor(std::chrono::milliseconds(20));
        display.server().kill();
        runFor(std::chrono::seconds(30));
      },
      testing::ExitedWithCode(EXIT_FAILURE), testing::Eq("[Vembrix] the X server went away\n"));
}

}  // namespace
}  // namespace vembrix
