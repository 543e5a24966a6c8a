#pragma once

class QFont;
class QPainter;
class QPointF;
class QString;

namespace vembrix {

/// Returns the height of a line that clips no letter, in whole points.
int lineHeight(const QFont& font);

/// Returns the baseline of a line of that height, in whole points from its top.
int lineBaseline(const QFont& font);

/// Returns the baseline that centres capitals in that height, in points from its top, on a whole
/// row of pixels at that scale. It is the same for every font of one size, unlike the baseline of a
/// centred line box.
double middleBaseline(const QFont& font, double height, double scale);

/// Draws one line that starts at that point, the left end of its baseline. The text determines its
/// direction, regardless of the widget's, so the ellipsis of a name is where the name ends.
void drawLine(QPainter& painter, const QPointF& start, const QString& text);

}  // namespace vembrix
