#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QFont>
#include <QObject>
#include <QString>

#include "platform/TourOverlay.h"
#include "platform/linux/labels/PanelContent.h"

namespace vembrix {

class BareWindow;

/// The view of the tour's overlay. The spinner turns while it is visible. Main thread.
class TourOverlayView : public QObject, public PanelContent {
 public:
  explicit TourOverlayView(const TourOverlayContent& content);

  /// Sets the panel that shows the view, for this object's life.
  void setPanel(BareWindow& panel) { panel_ = &panel; }

  void paint(QPainter& painter, const QRectF& panel, Backing backing) override;
  void setVisible(bool visible) override;

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void paintSpinner(QPainter& painter, const QRectF& area) const;

  TourOverlayContent content_;
  QString line_;
  QFont font_;
  BareWindow* panel_ = nullptr;
  /// The frame of the spinner when it was last painted.
  QRectF spinner_;
  QBasicTimer timer_;
  QElapsedTimer clock_;
};

}  // namespace vembrix
