#pragma once

#include <QRectF>

class QPainter;

namespace vembrix {

/// How far the shadow of a panel reaches over its edges.
inline constexpr int kPanelShadowExtent = 24;

/// The soft shadow that a panel with round corners throws, a little downwards; under
/// the panel, which may be translucent, there is none. Main thread.
void paintPanelShadow(QPainter& painter, const QRectF& panel, double cornerRadius);

}  // namespace vembrix
