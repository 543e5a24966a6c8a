#pragma once

#include <QObject>
#include <QString>
#include <QVariant>
#include <optional>

#include "platform/Color.h"

class QDBusConnection;
class QDBusMessage;

namespace vembrix {

/// Reports whether the desktop is light or dark: the preference of the desktop portal, else the
/// look of the desktop's own widgets. Also whether the user wants less motion, which only the
/// portal reports. The portal is asked without waiting; its answer counts as a change.
/// notification::kInterfaceThemeChanged on the distributed center reports changes of light and
/// dark. Needs a Qt application. Main thread.
class AppearanceObserver : public QObject {
  Q_OBJECT

 public:
  AppearanceObserver();

  [[nodiscard]] Appearance value() const { return value_; }
  /// Always false without a portal.
  [[nodiscard]] bool reducesMotion() const { return reducesMotion_; }

  /// Evaluates the widgets' palette and the preference again and announces a change. To be called
  /// when the palette changes.
  void update();

 private:
  Q_SLOT void settingChanged(const QDBusMessage& signal);

  void followPortal(QDBusConnection bus);
  void readPortal();
  void read(const QString& key, const QString& method);
  void readReply(const QDBusMessage& reply, const QString& key, const QString& method);
  void take(const QString& key, const QVariant& value);

  /// The portal's preference; empty without one.
  std::optional<Appearance> preference_;
  Appearance value_ = Appearance::Light;
  bool reducesMotion_ = false;
};

}  // namespace vembrix
