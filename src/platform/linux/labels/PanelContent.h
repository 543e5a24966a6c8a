#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace vembrix {

/// Whether a panel can be translucent.
enum class Backing { Translucent, Opaque };

/// The content of a floating panel. Main thread.
class PanelContent {
 public:
  virtual ~PanelContent() = default;

  /// Paints the panel into that rectangle of the window. On an opaque backing it must paint every
  /// pixel; the corners are cut off later.
  virtual void paint(QPainter& painter, const QRectF& panel, Backing backing) = 0;
  /// Called when the panel becomes visible or invisible.
  virtual void setVisible(bool /*visible*/) {}
};

/// Paints the background of a panel: on an opaque backing the whole rectangle, regardless of the
/// colour's alpha.
void fillPanel(QPainter& painter, const QRectF& panel, double cornerRadius, QColor fill,
               Backing backing);

}  // namespace vembrix
