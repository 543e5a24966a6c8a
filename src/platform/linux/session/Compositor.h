#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QRegion>

namespace vembrix {

/// Reports whether a compositor runs, so that windows may be translucent; without X11 always true.
/// The X server reports when one starts or ends, so a query costs no round trip. Main thread; needs
/// a Qt application.
class Compositor : public QObject, public QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  static Compositor& shared();

  [[nodiscard]] bool isRunning() const { return isRunning_; }

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 Q_SIGNALS:
  /// A compositor has started or ended.
  void changed();

 private:
  Compositor();

  bool isRunning_ = true;
  /// The number of the event for a selection's new owner; 0 if the server sends none.
  int selectionEvent_ = 0;
};

/// Returns the shape of a window with round corners for a screen without a compositor. Its edge is
/// not smoothed.
QRegion roundedShape(const QRectF& rect, qreal radius);

}  // namespace vembrix
