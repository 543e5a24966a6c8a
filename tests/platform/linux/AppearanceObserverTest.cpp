#include <gmock/gmock.h>

#include <QApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QPalette>
#include <chrono>
#include <cstdlib>
#include <optional>

#include "platform/Application.h"
#include "platform/NotificationCenter.h"
#include "platform/linux/support/PrivateBus.h"
#include "platform/linux/support/SentLines.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using Age = FakePortal::Age;

void useWidgets(const QColor& ground, const QColor& text) {
  QPalette palette = QApplication::palette();
  palette.setColor(QPalette::Window, ground);
  palette.setColor(QPalette::WindowText, text);
  QApplication::setPalette(palette);
}

void useDarkWidgets() {
  useWidgets(QColor(30, 30, 30), QColor(230, 230, 230));
}

std::optional<Appearance> appearance() {
  return Application::shared().effectiveAppearance();
}

bool runUntilAppearance(Appearance wanted) {
  return runUntil([&] { return appearance() == wanted; });
}

class AppearanceObserverTest : public testing::Test {
 protected:
  AppearanceObserverTest() { TestSession::useNoScreen(); }

  TestSession session_;
  int changes_ = 0;
  Observation observation_ = NotificationCenter::distributed().addObserver(
      notification::kInterfaceThemeChanged, [this] { changes_ += 1; });
};

TEST_F(AppearanceObserverTest, WithoutABusTheWidgetsTell) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(appearance(), Appearance::Light);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));
  useDarkWidgets();
  EXPECT_TRUE(runUntilAppearance(Appearance::Dark));
  runFor(milliseconds(20));
  EXPECT_EQ(changes_, 1);
  EXPECT_THAT(sentLines(), testing::IsEmpty());
}

TEST_F(AppearanceObserverTest, WithoutAnAnnouncedBusNoneIsStarted) {
  unsetenv("DBUS_SESSION_BUS_ADDRESS");
  TestSession::setVariable("XDG_RUNTIME_DIR", session_.settings());
  EXPECT_EQ(appearance(), Appearance::Light);
  runFor(milliseconds(20));
  EXPECT_FALSE(QDBusConnection::sessionBus().isConnected());
  // The D-Bus library was not asked to look for a bus by itself.
  EXPECT_THAT(QDBusConnection::sessionBus().lastError().message().toStdString(),
              testing::Not(testing::HasSubstr("launch")));
  EXPECT_EQ(getenv("DBUS_SESSION_BUS_ADDRESS"), nullptr);
}

class PortalTest : public AppearanceObserverTest {
 protected:
  PrivateBus bus_;
};

TEST_F(PortalTest, WithoutAPortalTheWidgetsTell) {
  EXPECT_EQ(appearance(), Appearance::Light);
  useDarkWidgets();
  EXPECT_TRUE(runUntilAppearance(Appearance::Dark));
  EXPECT_EQ(changes_, 1);
  EXPECT_THAT(sentLines(), testing::IsEmpty());
}

TEST_F(PortalTest, IsAskedAtTheStartWithoutWaitingForIt) {
  FakePortal portal(bus_.connect("portal"), Age::Current);
  portal.presetPreference(1);
  // The portal answers only in this process's event loop.
  EXPECT_EQ(appearance(), Appearance::Light);
  EXPECT_TRUE(runUntilAppearance(Appearance::Dark));
  EXPECT_EQ(changes_, 1);
}

TEST_F(PortalTest, AnOldOneIsAskedInItsOwnWay) {
  FakePortal portal(bus_.connect("portal"), Age::Old);
  portal.presetPreference(1);
  EXPECT_EQ(appearance(), Appearance::Light);
  EXPECT_TRUE(runUntilAppearance(Appearance::Dark));
}

TEST_F(PortalTest, MayComeLater) {
  EXPECT_EQ(appearance(), Appearance::Light);
  runFor(milliseconds(50));
  FakePortal portal(bus_.connect("portal"), Age::Current);
  portal.presetPreference(1);
  EXPECT_TRUE(runUntilAppearance(Appearance::Dark));
  portal.setPreference(2);
  EXPECT_TRUE(runUntilAppearance(Appearance::Light));
  EXPECT_EQ(changes_, 2);
}

TEST_F(PortalTest, MayGoAndComeAgain) {
  EXPECT_EQ(appearance(), Appearance::Light);
  {
    FakePortal portal(bus_.connect("portal"), Age::Current);
    portal.setPreference(1);
    EXPECT_TRUE(runUntilAppearance(Appearance::Dark));
  }
  runFor(milliseconds(50));
  EXPECT_EQ(appearance(), Appearance::Dark) << "the preference stands";
  FakePortal portal(bus_.connect("portal 2"), Age::Current);
  portal.presetPreference(2);
  EXPECT_TRUE(runUntilAppearance(Appearance::Light));
}

TEST_F(PortalTest, ThePreferenceComesBeforeTheWidgets) {
  FakePortal portal(bus_.connect("portal"), Age::Current);
  portal.presetPreference(1);
  EXPECT_EQ(appearance(), Appearance::Light);
  EXPECT_TRUE(runUntilAppearance(Appearance::Dark));
  portal.setPreference(2);
  EXPECT_TRUE(runUntilAppearance(Appearance::Light));
  useDarkWidgets();
  runFor(milliseconds(50));
  EXPECT_EQ(appearance(), Appearance::Light);
}

TEST_F(PortalTest, WithoutAPreferenceTheWidgetsTell) {
  FakePortal portal(bus_.connect("portal"), Age::Current);
  portal.presetPreference(1);
  useDarkWidgets();
  EXPECT_TRUE(runUntilAppearance(Appearance::Dark));
  useWidgets(Qt::white, Qt::black);
  portal.setPreference(0);
  EXPECT_TRUE(runUntilAppearance(Appearance::Light));
  useDarkWidgets();
  EXPECT_TRUE(runUntilAppearance(Appearance::Dark));
}

TEST_F(PortalTest, TellsWhetherTheUserWantsLessMotion) {
  const auto isReduced = [] { return Application::shared().reducesMotion(); };
  EXPECT_FALSE(isReduced());
  for (const Age age : {Age::Current, Age::Old}) {
    FakePortal portal(bus_.connect("portal"), age);
    portal.setReducedMotion(1);
    EXPECT_TRUE(runUntil(isReduced));
    portal.setReducedMotion(0);
    EXPECT_TRUE(runUntil([&] { return !isReduced(); }));
  }
  EXPECT_EQ(changes_, 0) << "of light and dark";
}

TEST_F(PortalTest, IsAskedAboutMotionAtTheStart) {
  FakePortal portal(bus_.connect("portal"), Age::Current);
  portal.setReducedMotion(1);
  EXPECT_TRUE(runUntil([] { return Application::shared().reducesMotion(); }));
}

TEST_F(PortalTest, OtherSettingsAndNonsenseAreNoPreference) {
  FakePortal portal(bus_.connect("portal"), Age::Current);
  EXPECT_EQ(appearance(), Appearance::Light);
  runFor(milliseconds(50));
  portal.announceOtherSetting(1);
  QDBusMessage bare = QDBusMessage::createSignal(
      "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged");
  bus_.connect("portal").send(bare);
  bare << "org.freedesktop.appearance"
       << "color-scheme";
  bus_.connect("portal").send(bare);
  bare << QVariant::fromValue(QDBusVariant("dark"));
  bus_.connect("portal").send(bare);
  runFor(milliseconds(50));
  EXPECT_EQ(appearance(), Appearance::Light);
  EXPECT_EQ(changes_, 0);
  portal.setPreference(1);
  EXPECT_TRUE(runUntilAppearance(Appearance::Dark));
}

}  // namespace
}  // namespace vembrix
