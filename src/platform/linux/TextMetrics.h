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
/// row of pixels at that scale. Unlike that of a centred line box, it is the same for every font of
/// one size.
double middleBaseline(const QFont& font, double height, double scale);

/// Draws one line from that point on, at the left end of its baseline. The text decides its
/// direction, whatever the widget's is: so the ellipsis of a name is where the name ends.
void drawLine(QPainter& painter, const QPointF& start, const QString& text);

}  // namespace vembrix
