#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QRegion>

namespace vembrix {

/// Knows whether a compositor puts the screen together, so that windows may be
/// translucent. The X server tells when one comes or goes; asking here asks it
/// nothing. Where there is no X11, whoever shows the windows does so. Main thread;
/// needs a Qt application.
class Compositor : public QObject, public QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  static Compositor& shared();

  [[nodiscard]] bool isRunning() const { return isRunning_; }

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 Q_SIGNALS:
  /// A compositor has come or gone.
  void changed();

 private:
  Compositor();

  bool isRunning_ = true;
  /// Number of the event that tells of a selection's new owner; 0: none comes.
  int selectionEvent_ = 0;
};

/// The shape of a window with round corners where there is no compositor to show what
/// is behind them. Its edge is rough.
QRegion roundedShape(const QRectF& rect, qreal radius);

}  // namespace vembrix
