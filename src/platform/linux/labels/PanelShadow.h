#pragma once

#include <QRectF>

class QPainter;

namespace vembrix {

/// The extent of a panel's shadow beyond its edges.
inline constexpr int kPanelShadowExtent = 24;

/// Paints the soft shadow of a panel with round corners, slightly offset downwards. Leaves out the
/// area under the panel, which may be translucent. Main thread.
void paintPanelShadow(QPainter& painter, const QRectF& panel, double cornerRadius);

}  // namespace vembrix
