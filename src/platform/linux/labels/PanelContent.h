#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace vembrix {

/// Whether what is behind a panel shines through.
enum class Backing { Translucent, Opaque };

/// What a floating panel shows. Main thread.
class PanelContent {
 public:
  virtual ~PanelContent() = default;

  /// Paints the panel, which has that place in the window. On an opaque backing every
  /// pixel of the rectangle is painted: its corners are cut off later.
  virtual void paint(QPainter& painter, const QRectF& panel, Backing backing) = 0;
  /// Whether the panel can be seen from now on.
  virtual void setVisible(bool /*visible*/) {}
};

/// Paints the ground of a panel: on an opaque backing the whole rectangle, whatever the
/// colour's alpha.
void fillPanel(QPainter& painter, const QRectF& panel, double cornerRadius, QColor fill,
               Backing backing);

}  // namespace vembrix
