#pragma once

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "platform/Color.h"

namespace vembrix {

// How the controls of the settings window are drawn: after those of macOS, from
// lines and fills only, so that they are crisp at every scale. Rectangles in
// points. Main thread.

/// In points.
namespace control_metrics {
inline constexpr int kButtonHeight = 22;
inline constexpr int kButtonPadding = 14;
inline constexpr double kButtonRadius = 5.5;
inline constexpr int kPopupHeight = 22;
inline constexpr int kPopupTextLeading = 9;
/// The square with the chevrons, and what is left of the button around it.
inline constexpr double kChevronSquare = 16;
inline constexpr double kChevronInset = 3;
inline constexpr int kCheckboxSize = 14;
inline constexpr int kCheckboxSpacing = 6;
inline constexpr int kCheckboxHeight = 18;
inline constexpr double kCheckboxRadius = 3.5;
inline constexpr int kKnobSize = 18;
inline constexpr int kSliderHeight = 22;
inline constexpr double kTrackHeight = 4;
inline constexpr int kFieldHeight = 22;
inline constexpr int kFieldPadding = 7;
inline constexpr double kFieldRadius = 5;
inline constexpr int kScrollerWidth = 11;
inline constexpr double kFocusRingWidth = 3;
inline constexpr int kMenuRowHeight = 22;
/// From a menu row's leading edge to its text; the tick stands before that.
inline constexpr int kMenuTextLeading = 24;
inline constexpr int kMenuPadding = 5;
inline constexpr double kMenuRadius = 6;
}  // namespace control_metrics

/// What the drawing of a control depends on besides its value.
struct ControlState {
  Appearance appearance = Appearance::Light;
  bool isEnabled = true;
  bool isPressed = false;
};

/// The rounded ground of push buttons and pop-up buttons.
void paintButtonGround(QPainter& painter, const QRectF& rect, const ControlState& state);
/// The accent square with two chevrons at a pop-up button's end.
void paintChevrons(QPainter& painter, const QRectF& button, const ControlState& state);
void paintCheckbox(QPainter& painter, const QRectF& box, bool isOn, const ControlState& state);
/// The part of the track before the knob is filled.
void paintSlider(QPainter& painter, const QRectF& slider, const QRectF& knob,
                 const ControlState& state);
void paintField(QPainter& painter, const QRectF& rect, const ControlState& state);
/// Around `rect`, outside of it.
void paintFocusRing(QPainter& painter, const QRectF& rect, double radius, Appearance appearance);
void paintScroller(QPainter& painter, const QRectF& knob, const ControlState& state);
/// A tick in the middle of `rect`, for a menu's row.
void paintMenuTick(QPainter& painter, const QRectF& rect, const QColor& color);

/// Where the baseline of a line stands whose capitals are in the middle of a
/// control of that height: from its top, whole points.
int centeredBaseline(const QFont& font, int height);
/// One line, cut off at the end with an ellipsis where it is too wide. Leading
/// within the rectangle, or in its middle.
enum class TextPlace { Leading, Center };
void paintLine(QPainter& painter, const QRect& rect, const QString& text, TextPlace place);

}  // namespace vembrix
