#include "platform/linux/AppearanceObserver.h"

#include <QColor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

#include "platform/NotificationCenter.h"
#include "platform/linux/session/SessionBus.h"

namespace vembrix {
namespace {

const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString kNamespace = QStringLiteral("org.freedesktop.appearance");
const QString kColorScheme = QStringLiteral("color-scheme");
const QString kReducedMotion = QStringLiteral("reduced-motion");
const QString kReadOne = QStringLiteral("ReadOne");
/// The error of portals that are older than the method ReadOne.
const QString kUnknownMethod = QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod");
const QString kRead = QStringLiteral("Read");

/// Read wraps its answer in a variant twice, ReadOne once.
QVariant unwrapped(QVariant value) {
  while (value.userType() == qMetaTypeId<QDBusVariant>()) {
    value = qvariant_cast<QDBusVariant>(value).variant();
  }
  return value;
}

std::optional<Appearance> preferenceIn(unsigned value) {
  switch (value) {
    case 1:
      return Appearance::Dark;
    case 2:
      return Appearance::Light;
    default:
      return std::nullopt;
  }
}

/// Returns dark if the widgets' text is lighter than their background.
Appearance appearanceOfWidgets() {
  const QPalette palette = QGuiApplication::palette();
  const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
  const QColor ground = palette.color(QPalette::Active, QPalette::Window);
  return text.lightnessF() > ground.lightnessF() ? Appearance::Dark : Appearance::Light;
}

}  // namespace

AppearanceObserver::AppearanceObserver() : value_(appearanceOfWidgets()) {
  if (const auto bus = sessionBus()) followPortal(*bus);
}

void AppearanceObserver::followPortal(QDBusConnection bus) {
  bus.connect(kPortal, kPortalPath, kSettings, QStringLiteral("SettingChanged"), this,
              SLOT(settingChanged(QDBusMessage)));
  auto* watcher =
      new QDBusServiceWatcher(kPortal, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
  // The preference stays when the portal ends.
  QObject::connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                   [this](const QString&, const QString&, const QString& owner) {
                     if (!owner.isEmpty()) readPortal();
                   });
  readPortal();
}

void AppearanceObserver::readPortal() {
  for (const QString& key : {kColorScheme, kReducedMotion}) read(key, kReadOne);
}

void AppearanceObserver::read(const QString& key, const QString& method) {
  auto bus = sessionBus();
  if (!bus) return;
  QDBusMessage call = QDBusMessage::createMethodCall(kPortal, kPortalPath, kSettings, method);
  call << kNamespace << key;
  auto* watcher = new QDBusPendingCallWatcher(bus->asyncCall(call), this);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this,
                   [this, key, method](QDBusPendingCallWatcher* finished) {
                     readReply(finished->reply(), key, method);
                     finished->deleteLater();
                   });
}

void AppearanceObserver::readReply(const QDBusMessage& reply, const QString& key,
                                   const QString& method) {
  if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
    take(key, reply.arguments().constFirst());
  } else if (method == kReadOne && reply.errorName() == kUnknownMethod) {
    read(key, kRead);
  }
}

void AppearanceObserver::settingChanged(const QDBusMessage& signal) {
  const QList<QVariant> arguments = signal.arguments();
  if (arguments.size() != 3 || arguments[0] != kNamespace) return;
  take(arguments[1].toString(), arguments[2]);
}

/// Other settings are left out; values that the portal does not define are no preference.
void AppearanceObserver::take(const QString& key, const QVariant& value) {
  const unsigned number = unwrapped(value).toUInt();
  if (key == kColorScheme) {
    preference_ = preferenceIn(number);
    update();
  } else if (key == kReducedMotion) {
    reducesMotion_ = number == 1;
  }
}

void AppearanceObserver::update() {
  const Appearance value = preference_.value_or(appearanceOfWidgets());
  if (value == value_) return;
  value_ = value;
  NotificationCenter::distributed().post(notification::kInterfaceThemeChanged);
}

}  // namespace vembrix
