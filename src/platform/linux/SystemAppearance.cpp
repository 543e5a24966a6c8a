#include "platform/linux/SystemAppearance.h"

#include <QColor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <QVariant>

#include "platform/NotificationCenter.h"
#include "platform/linux/SessionBus.h"

namespace vembrix {
namespace {

const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString kNamespace = QStringLiteral("org.freedesktop.appearance");
const QString kColorScheme = QStringLiteral("color-scheme");
const QString kReadOne = QStringLiteral("ReadOne");
/// What portals had before ReadOne.
const QString kUnknownMethod = QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod");
const QString kRead = QStringLiteral("Read");

/// Read wraps its answer in a variant twice, ReadOne once.
QVariant unwrapped(QVariant value) {
  while (value.userType() == qMetaTypeId<QDBusVariant>()) {
    value = qvariant_cast<QDBusVariant>(value).variant();
  }
  return value;
}

std::optional<Appearance> preferenceIn(const QVariant& value) {
  switch (unwrapped(value).toUInt()) {
    case 1:
      return Appearance::Dark;
    case 2:
      return Appearance::Light;
    default:
      return std::nullopt;
  }
}

/// Text lighter than its ground: dark.
Appearance appearanceOfWidgets() {
  const QPalette palette = QGuiApplication::palette();
  const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
  const QColor ground = palette.color(QPalette::Active, QPalette::Window);
  return text.lightnessF() > ground.lightnessF() ? Appearance::Dark : Appearance::Light;
}

}  // namespace

SystemAppearance::SystemAppearance() : value_(appearanceOfWidgets()) {
  if (const auto bus = sessionBus()) followPortal(*bus);
}

void SystemAppearance::followPortal(QDBusConnection bus) {
  bus.connect(kPortal, kPortalPath, kSettings, QStringLiteral("SettingChanged"), this,
              SLOT(settingChanged(QDBusMessage)));
  auto* watcher =
      new QDBusServiceWatcher(kPortal, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
  // A portal that leaves takes nothing back: the user's preference stands.
  QObject::connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                   [this](const QString&, const QString&, const QString& owner) {
                     if (!owner.isEmpty()) readPortal(kReadOne);
                   });
  readPortal(kReadOne);
}

void SystemAppearance::readPortal(const QString& method) {
  auto bus = sessionBus();
  if (!bus) return;
  QDBusMessage call = QDBusMessage::createMethodCall(kPortal, kPortalPath, kSettings, method);
  call << kNamespace << kColorScheme;
  auto* watcher = new QDBusPendingCallWatcher(bus->asyncCall(call), this);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this,
                   [this, method](QDBusPendingCallWatcher* finished) {
                     readReply(finished->reply(), method);
                     finished->deleteLater();
                   });
}

void SystemAppearance::readReply(const QDBusMessage& reply, const QString& method) {
  if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
    setPreference(preferenceIn(reply.arguments().constFirst()));
  } else if (method == kReadOne && reply.errorName() == kUnknownMethod) {
    readPortal(kRead);
  }
}

void SystemAppearance::settingChanged(const QDBusMessage& signal) {
  const QList<QVariant> arguments = signal.arguments();
  const bool isColorScheme =
      arguments.size() == 3 && arguments[0] == kNamespace && arguments[1] == kColorScheme;
  if (isColorScheme) setPreference(preferenceIn(arguments[2]));
}

void SystemAppearance::setPreference(std::optional<Appearance> preference) {
  preference_ = preference;
  update();
}

void SystemAppearance::update() {
  const Appearance value = preference_.value_or(appearanceOfWidgets());
  if (value == value_) return;
  value_ = value;
  NotificationCenter::distributed().post(notification::kInterfaceThemeChanged);
}

}  // namespace vembrix
