#pragma once

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "platform/Color.h"

namespace vembrix {

// Draws the controls of the settings window like those of macOS, from lines and fills only, so that
// they are crisp at every scale. Rectangles in points. Main thread.

/// All lengths are in points.
namespace control_metrics {
inline constexpr int kButtonHeight = 22;
inline constexpr int kButtonPadding = 14;
inline constexpr double kButtonRadius = 5.5;
inline constexpr int kPopupHeight = 22;
inline constexpr int kPopupTextLeading = 9;
/// The size of the square with the chevrons, and its distance from the button's edges.
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
/// The width of the arrows in a number's field.
inline constexpr int kStepperWidth = 16;
inline constexpr double kFocusRingWidth = 3;
/// The distance from a menu row's leading edge to its text; the tick is to its left.
inline constexpr int kMenuTextLeading = 24;
}  // namespace control_metrics

/// The state of a control that its drawing depends on, besides the value.
struct ControlState {
  Appearance appearance = Appearance::Light;
  bool isEnabled = true;
  bool isPressed = false;
};

/// Paints the rounded background of push buttons and pop-up buttons.
void paintButtonGround(QPainter& painter, const QRectF& rect, const ControlState& state);
/// Paints the accent square with two chevrons at a pop-up button's end.
void paintChevrons(QPainter& painter, const QRectF& button, const ControlState& state);
void paintCheckbox(QPainter& painter, const QRectF& box, bool isOn, const ControlState& state);
/// Paints a slider; the part of the track before the knob is filled.
void paintSlider(QPainter& painter, const QRectF& slider, const QRectF& knob,
                 const ControlState& state);
/// Paints the two arrows that step a number in the middle of `rect`.
void paintStepper(QPainter& painter, const QRectF& rect, const QColor& color);
void paintField(QPainter& painter, const QRectF& rect, const ControlState& state);
/// Paints a ring around the outside of `rect`.
void paintFocusRing(QPainter& painter, const QRectF& rect, double radius, Appearance appearance);
void paintScroller(QPainter& painter, const QRectF& knob, const ControlState& state);
/// Paints the tick of a menu's row in the middle of `rect`.
void paintMenuTick(QPainter& painter, const QRectF& rect, const QColor& color);

/// Returns the baseline that centres capitals in a control of that height, in whole points from its
/// top.
int centeredBaseline(const QFont& font, int height);
/// The alignment of a line of text, which is truncated at the end with an ellipsis.
enum class TextPlace { Leading, Center };
void paintLine(QPainter& painter, const QRect& rect, const QString& text, TextPlace place);

}  // namespace vembrix
