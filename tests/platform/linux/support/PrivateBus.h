#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QVariant>
#include <optional>
#include <string>

#include "platform/Color.h"
#include "platform/linux/support/ChildProcess.h"
#include "platform/linux/support/TemporaryDirectory.h"

namespace vembrix {

/// A private message bus, which replaces the session's and the system's bus for all later
/// connections of this process.
class PrivateBus {
 public:
  PrivateBus();

  /// Returns a new connection, as another program would have it.
  [[nodiscard]] QDBusConnection connect(const QString& name) const;

 private:
  TemporaryDirectory directory_;
  std::string address_;
  std::optional<ChildProcess> daemon_;
};

/// A desktop portal with one setting: whether the user prefers light or dark. On the bus from
/// creation to destruction.
class FakePortal : public QDBusVirtualObject {
 public:
  /// Old portals have no ReadOne.
  enum class Age { Current, Old };

  FakePortal(QDBusConnection bus, Age age);
  ~FakePortal() override;
  FakePortal(const FakePortal&) = delete;
  FakePortal& operator=(const FakePortal&) = delete;

  /// Sets the portal's number (0 none, 1 dark, 2 light) and emits the change.
  void setPreference(unsigned preference);
  /// Sets the same without a signal.
  void presetPreference(unsigned preference) { preference_ = preference; }
  /// Sets whether the user wants less motion (0 or 1) and emits the change.
  void setReducedMotion(unsigned value);
  /// Emits the change of another setting to the same number.
  void announceOtherSetting(unsigned value);

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;
  QString introspect(const QString& path) const override;

 private:
  void announce(const QString& key, unsigned value);

  QDBusConnection bus_;
  Age age_;
  unsigned preference_ = 0;
  unsigned reducedMotion_ = 0;
};

}  // namespace vembrix
