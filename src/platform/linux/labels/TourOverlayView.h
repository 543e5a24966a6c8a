#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QFont>
#include <QObject>
#include <QString>

#include "platform/TourOverlay.h"
#include "platform/linux/labels/PanelContent.h"

namespace vembrix {

class FloatingPanel;

/// The look of the tour's overlay. The spinner turns while it can be seen. Main thread.
class TourOverlayView : public QObject, public PanelContent {
 public:
  explicit TourOverlayView(const TourOverlayContent& content);

  /// Which shows it, from now on and as long as this lives.
  void setPanel(FloatingPanel& panel) { panel_ = &panel; }

  void paint(QPainter& painter, const QRectF& panel, Backing backing) override;
  void setVisible(bool visible) override;

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void paintSpinner(QPainter& painter, const QRectF& area) const;

  TourOverlayContent content_;
  QString line_;
  QFont font_;
  FloatingPanel* panel_ = nullptr;
  /// Where it was painted last.
  QRectF spinner_;
  QBasicTimer timer_;
  QElapsedTimer clock_;
};

}  // namespace vembrix
