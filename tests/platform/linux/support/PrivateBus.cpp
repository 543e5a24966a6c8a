#include "platform/linux/support/PrivateBus.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <array>
#include <stdexcept>

#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

const char* const kSettings = "org.freedesktop.portal.Settings";
const char* const kPath = "/org/freedesktop/portal/desktop";
const char* const kService = "org.freedesktop.portal.Desktop";

QVariant wrapped(const QVariant& value) {
  return QVariant::fromValue(QDBusVariant(value));
}

}  // namespace

PrivateBus::PrivateBus() {
  // Without services that the bus could start, so that only the test answers.
  const std::string settings = directory_.write(
      "bus.conf",
      "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
      "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
      "<busconfig><type>session</type><listen>unix:dir=" +
          directory_.path().string() +
          "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
          "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
          "<allow own=\"*\"/></policy></busconfig>\n");
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  daemon_.emplace(ChildProcess::Command{
      .words = {"dbus-daemon", "--nofork", "--nopidfile", "--nosyslog", "--config-file", settings,
                "--print-address=" + std::to_string(ChildProcess::kOutput)},
      .environment = {},
      .output = ends[1]});
  close(ends[1]);
  address_ = readLine(ends[0]);
  close(ends[0]);
  if (address_.empty()) throw std::runtime_error("dbus-daemon did not start");
  TestSession::setVariable("DBUS_SESSION_BUS_ADDRESS", address_);
  TestSession::setVariable("DBUS_SYSTEM_BUS_ADDRESS", address_);
}

QDBusConnection PrivateBus::connect(const QString& name) const {
  return QDBusConnection::connectToBus(QString::fromStdString(address_), name);
}

FakePortal::FakePortal(QDBusConnection bus, Age age) : bus_(std::move(bus)), age_(age) {
  bus_.registerVirtualObject(kPath, this);
  bus_.registerService(kService);
}

FakePortal::~FakePortal() {
  bus_.unregisterService(kService);
  bus_.unregisterObject(kPath);
}

void FakePortal::setPreference(unsigned preference) {
  preference_ = preference;
  announce("color-scheme", preference);
}

void FakePortal::setReducedMotion(unsigned value) {
  reducedMotion_ = value;
  announce("reduced-motion", value);
}

void FakePortal::announceOtherSetting(unsigned value) {
  announce("contrast", value);
}

void FakePortal::announce(const QString& key, unsigned value) {
  QDBusMessage signal = QDBusMessage::createSignal(kPath, kSettings, "SettingChanged");
  signal << "org.freedesktop.appearance" << key << wrapped(value);
  bus_.send(signal);
}

bool FakePortal::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
  const QList<QVariant> colorScheme{"org.freedesktop.appearance", "color-scheme"};
  const QList<QVariant> reducedMotion{"org.freedesktop.appearance", "reduced-motion"};
  const bool isAboutMotion = message.arguments() == reducedMotion;
  const QVariant once = wrapped(isAboutMotion ? reducedMotion_ : preference_);
  const bool isAsked =
      message.interface() == kSettings && (isAboutMotion || message.arguments() == colorScheme);
  if (isAsked && message.member() == "ReadOne" && age_ == Age::Current) {
    return bus.send(message.createReply(once));
  }
  if (isAsked && message.member() == "Read") return bus.send(message.createReply(wrapped(once)));
  return bus.send(message.createErrorReply(QDBusError::UnknownMethod, message.member()));
}

QString FakePortal::introspect(const QString& /*path*/) const {
  return {};
}

}  // namespace vembrix
