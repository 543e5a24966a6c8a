#pragma once

#include <QObject>
#include <QString>
#include <QVariant>
#include <optional>

#include "platform/Color.h"

class QDBusConnection;
class QDBusMessage;

namespace vembrix {

/// Whether the desktop is light or dark: what the desktop portal says that the
/// user prefers, else what the desktop's own widgets look like. Also whether the
/// user wants less motion, which the portal alone tells. Asking the portal takes
/// no time of the launch; its answer, when it comes, is a change like any other.
/// Changes of light and dark are told by notification::kInterfaceThemeChanged on
/// the distributed center. Needs a Qt application. Main thread.
class SystemAppearance : public QObject {
  Q_OBJECT

 public:
  SystemAppearance();

  [[nodiscard]] Appearance value() const { return value_; }
  /// False without a portal.
  [[nodiscard]] bool reducesMotion() const { return reducesMotion_; }

  /// Looks at the widgets' palette and the preference anew, and announces the
  /// value where it is another than before. To be called when the palette
  /// changes.
  void update();

 private:
  Q_SLOT void settingChanged(const QDBusMessage& signal);

  void followPortal(QDBusConnection bus);
  void readPortal();
  void read(const QString& key, const QString& method);
  void readReply(const QDBusMessage& reply, const QString& key, const QString& method);
  void take(const QString& key, const QVariant& value);

  /// The portal's; nothing without a portal or without a preference.
  std::optional<Appearance> preference_;
  Appearance value_ = Appearance::Light;
  bool reducesMotion_ = false;
};

}  // namespace vembrix
