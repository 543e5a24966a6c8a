#include "platform/linux/ui/controls/ControlStyle.h"

#include <QDialogButtonBox>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionMenuItem>
#include <QStyleOptionSlider>
#include <QStyleOptionSpinBox>
#include <algorithm>

#include "platform/linux/TextMetrics.h"
#include "platform/linux/menubar/MenuPainting.h"
#include "platform/linux/session/Compositor.h"
#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/ControlPainting.h"

namespace vembrix {
namespace {

using namespace control_metrics;

constexpr int kScrollerInset = 8;
constexpr int kLeastKnob = 30;

ControlState stateOf(const QStyleOption& option) {
  return {.appearance = appearanceOf(option.palette),
          .isEnabled = option.state.testFlag(QStyle::State_Enabled),
          .isPressed = option.state.testFlag(QStyle::State_Sunken)};
}

/// Returns the title with single ampersands; they arrive doubled, as Qt's shortcuts require.
QString plainText(QString text) {
  return text.replace(QLatin1String("&&"), QLatin1String("&"));
}

bool isBordered(const QStyleOption& field) {
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&field);
  return frame && frame->lineWidth > 0;
}

/// Returns how far the menu of a pop-up button extends beyond its leading edge, and beyond its top
/// if the first item is chosen. The chosen item's text then covers the button's.
QPoint menuShift(const QStyleOption& button) {
  constexpr int kEdge = 1;
  const int row = std::max(kMenuRowHeight, button.fontMetrics.height());
  return {kMenuTextLeading + kEdge - kPopupTextLeading,
          kMenuPadding + kEdge + (row - button.rect.height()) / 2};
}

/// Returns the part of a check box beside which the first line of its title is.
QRect firstLineOf(const QStyleOption& option) {
  QRect line = option.rect;
  line.setHeight(std::min(line.height(), std::max(kCheckboxHeight, option.fontMetrics.height())));
  return line;
}

QRect checkboxRect(const QStyleOption& option) {
  const QRect line = firstLineOf(option);
  return {line.left(), line.top() + (line.height() - kCheckboxSize) / 2, kCheckboxSize,
          kCheckboxSize};
}

void drawCheckbox(const QStyleOptionButton& option, QPainter& painter) {
  paintCheckbox(painter, checkboxRect(option), option.state.testFlag(QStyle::State_On),
                stateOf(option));
  painter.setPen(option.palette.color(QPalette::WindowText));
  const QRect line = firstLineOf(option).adjusted(kCheckboxSize + kCheckboxSpacing, 0, 0, 0);
  if (line.height() == option.rect.height()) {
    paintLine(painter, line, plainText(option.text), TextPlace::Leading);
    return;
  }
  const int above = centeredBaseline(painter.font(), line.height()) - option.fontMetrics.ascent();
  painter.drawText(option.rect.adjusted(kCheckboxSize + kCheckboxSpacing, std::max(above, 0), 0, 0),
                   Qt::TextWordWrap, plainText(option.text));
}

void drawPushButton(const QStyleOptionButton& option, QPainter& painter) {
  const bool isFlat = option.features.testFlag(QStyleOptionButton::Flat);
  if (!isFlat) paintButtonGround(painter, option.rect, stateOf(option));
  QColor ink = option.palette.color(QPalette::ButtonText);
  if (isFlat && option.state.testFlag(QStyle::State_Sunken)) ink.setAlphaF(ink.alphaF() * 0.6F);
  painter.setPen(ink);
  if (isFlat) {
    painter.drawText(option.rect.topLeft() + QPoint(0, lineBaseline(painter.font())),
                     plainText(option.text));
  } else {
    paintLine(painter, option.rect, plainText(option.text), TextPlace::Center);
  }
}

void drawPopupButton(const QStyleOptionComboBox& option, QPainter& painter) {
  const ControlState state = stateOf(option);
  paintButtonGround(painter, option.rect, state);
  paintChevrons(painter, option.rect, state);
}

QRect popupTextRect(const QRect& button) {
  const int trailing = static_cast<int>(kChevronInset + kChevronSquare) + 4;
  return button.adjusted(kPopupTextLeading, 0, -trailing, 0);
}

void drawMenuRow(const QStyleOptionMenuItem& option, QPainter& painter) {
  const bool isSelected = option.state.testFlag(QStyle::State_Selected);
  painter.fillRect(option.rect, option.palette.color(QPalette::Base));
  QColor ink = option.palette.color(QPalette::Text);
  if (isSelected) {
    // The rows lie within the panel's edge.
    paintMenuHighlight(painter, option.rect, kMenuHighlightInset - 1,
                       option.palette.color(QPalette::Highlight));
    ink = option.palette.color(QPalette::HighlightedText);
  }
  if (option.checked) {
    const QRect tick(option.rect.left() + kMenuPadding, option.rect.top(),
                     kMenuTextLeading - kMenuPadding, option.rect.height());
    paintMenuTick(painter, tick, ink);
  }
  painter.setFont(option.font);
  painter.setPen(ink);
  paintLine(painter, option.rect.adjusted(kMenuTextLeading, 0, -kMenuPadding, 0),
            plainText(option.text), TextPlace::Leading);
}

/// Returns the part of a number's field with the two arrows.
QRect stepperRect(const QRect& field) {
  return field.adjusted(field.width() - kStepperWidth, 0, 0, 0);
}

QRect stepperPart(const QRect& field, QStyle::SubControl part) {
  const QRect stepper = stepperRect(field);
  if (part == QStyle::SC_SpinBoxUp) return stepper.adjusted(0, 0, 0, -stepper.height() / 2);
  if (part == QStyle::SC_SpinBoxDown) return stepper.adjusted(0, stepper.height() / 2, 0, 0);
  // Qt's text field adds two points.
  const int padding = kFieldPadding - 2;
  if (part == QStyle::SC_SpinBoxEditField) return field.adjusted(padding, 0, -kStepperWidth, 0);
  return field;
}

QRect knobRect(const QStyleOptionSlider& option) {
  const int free = option.rect.width() - kKnobSize;
  const int left = QStyle::sliderPositionFromValue(option.minimum, option.maximum,
                                                   option.sliderPosition, free, option.upsideDown);
  return {option.rect.left() + left, option.rect.top() + (option.rect.height() - kKnobSize) / 2,
          kKnobSize, kKnobSize};
}

/// Returns the groove of the scroller's knob, which is clear of the rounded corners of the scrolled
/// area.
QRect scrollerGroove(const QStyleOption& option) {
  return option.rect.adjusted(0, kScrollerInset, 0, -kScrollerInset);
}

QRect scrollerKnobRect(const QStyleOptionSlider& option) {
  const QRect groove = scrollerGroove(option);
  const int length = groove.height();
  const int range = option.maximum - option.minimum;
  if (range <= 0 || length <= 0) return {};
  const auto part = static_cast<qint64>(length) * option.pageStep / (range + option.pageStep);
  const int knob = std::clamp(static_cast<int>(part), std::min(kLeastKnob, length), length);
  const int top = QStyle::sliderPositionFromValue(option.minimum, option.maximum,
                                                  option.sliderPosition, length - knob);
  return {groove.left(), groove.top() + top, groove.width(), knob};
}

}  // namespace

ControlStyle& ControlStyle::shared() {
  static auto& style = *new ControlStyle;
  return style;
}

ControlStyle::ControlStyle() : QProxyStyle(QStringLiteral("fusion")) {}

int ControlStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
  switch (metric) {
    case PM_SliderLength:
    case PM_SliderThickness:
    case PM_SliderControlThickness:
      return kKnobSize;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
      return kCheckboxSize;
    case PM_CheckBoxLabelSpacing:
      return kCheckboxSpacing;
    case PM_ScrollBarExtent:
    case PM_ScrollView_ScrollBarOverlap:
      return kScrollerWidth;
    case PM_ScrollView_ScrollBarSpacing:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
      return 0;
    case PM_MenuVMargin:
    case PM_MenuHMargin:
      return kMenuPadding;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int ControlStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* data) const {
  switch (hint) {
    // The menu opens over the button, with the chosen item in its place.
    case SH_ComboBox_Popup:
      return 1;
    // A click on the track moves the knob there.
    case SH_Slider_AbsoluteSetButtons:
      return Qt::LeftButton;
    case SH_Menu_Mask:
      if (auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(data);
          mask && option && !Compositor::shared().isRunning()) {
        mask->region = roundedShape(option->rect, kMenuCornerRadius);
        return 1;
      }
      return 0;
    case SH_DialogButtonLayout:
      return QDialogButtonBox::MacLayout;
    case SH_Slider_PageSetButtons:
    case SH_UnderlineShortcut:
    case SH_EtchDisabledText:
    case SH_Menu_FlashTriggeredItem:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, data);
  }
}

QSize ControlStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& size, const QWidget* widget) const {
  switch (type) {
    case CT_CheckBox:
      return {size.width() + kCheckboxSize + kCheckboxSpacing,
              std::max(kCheckboxHeight, size.height())};
    case CT_PushButton: {
      const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
      const bool isFlat = button && button->features.testFlag(QStyleOptionButton::Flat);
      // A button without a border is as high as any line of text.
      const int least = !isFlat ? kButtonHeight : widget ? lineHeight(widget->font()) : 0;
      return {size.width() + (isFlat ? 2 : 2 * kButtonPadding), std::max(least, size.height())};
    }
    case CT_ComboBox:
      return {size.width() + kPopupTextLeading + 24, std::max(kPopupHeight, size.height())};
    case CT_Slider:
      return {size.width(), kSliderHeight};
    case CT_SpinBox:
      return {size.width() + 2 * kFieldPadding + kStepperWidth,
              std::max(kFieldHeight, size.height())};
    case CT_LineEdit:
      return {size.width() + 2 * kFieldPadding, std::max(kFieldHeight, size.height())};
    case CT_MenuItem: {
      const auto* row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
      const QSize text = row ? QFontMetrics(row->font).size(Qt::TextSingleLine, row->text) : size;
      // The menu is at least as wide as its button.
      const int button = widget ? widget->width() + menuShift(*option).x() - 2 : 0;
      return {std::max(text.width() + 2 * kMenuTextLeading, button),
              std::max(kMenuRowHeight, text.height())};
    }
    default:
      return QProxyStyle::sizeFromContents(type, option, size, widget);
  }
}

QRect ControlStyle::subElementRect(SubElement element, const QStyleOption* option,
                                   const QWidget* widget) const {
  switch (element) {
    case SE_CheckBoxIndicator:
      return checkboxRect(*option);
    case SE_CheckBoxContents:
      return option->rect.adjusted(kCheckboxSize + kCheckboxSpacing, 0, 0, 0);
    case SE_CheckBoxClickRect:
    case SE_PushButtonContents:
      return option->rect;
    case SE_LineEditContents: {
      // Qt's text field adds two points.
      const int padding = (isBordered(*option) ? kFieldPadding : 0) - 2;
      return option->rect.adjusted(padding, 0, -padding, 0);
    }
    default:
      return QProxyStyle::subElementRect(element, option, widget);
  }
}

QRect ControlStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                   SubControl part, const QWidget* widget) const {
  const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (control == CC_Slider && slider) {
    return part == SC_SliderHandle ? knobRect(*slider) : slider->rect;
  }
  if (control == CC_ScrollBar && slider && slider->orientation == Qt::Vertical) {
    if (part == SC_ScrollBarSlider) return scrollerKnobRect(*slider);
    if (part == SC_ScrollBarGroove) return scrollerGroove(*slider);
    const QRect knob = scrollerKnobRect(*slider);
    QRect page = slider->rect;
    if (part == SC_ScrollBarSubPage) page.setBottom(knob.top() - 1);
    if (part == SC_ScrollBarAddPage) page.setTop(knob.bottom() + 1);
    return part == SC_ScrollBarSubPage || part == SC_ScrollBarAddPage ? page : QRect();
  }
  if (control == CC_SpinBox) return stepperPart(option->rect, part);
  if (control == CC_ComboBox) {
    if (part == SC_ComboBoxEditField) return popupTextRect(option->rect);
    if (part == SC_ComboBoxListBoxPopup) {
      const QPoint shift = menuShift(*option);
      return option->rect.adjusted(-shift.x(), -shift.y(), 0, -shift.y());
    }
    return option->rect;
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

void ControlStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
  switch (element) {
    case PE_PanelLineEdit:
      if (!isBordered(*option)) return;
      painter->save();
      painter->setRenderHint(QPainter::Antialiasing);
      paintField(*painter, option->rect, stateOf(*option));
      painter->restore();
      return;
    case PE_PanelMenu:
      paintMenuPanel(*painter, option->rect, option->palette);
      return;
    // FocusRing replaces the focus frames of all controls.
    case PE_FrameFocusRect:
    case PE_FrameLineEdit:
    case PE_FrameMenu:
    case PE_Frame:
    case PE_PanelScrollAreaCorner:
      return;
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void ControlStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
  const auto* popup = qstyleoption_cast<const QStyleOptionComboBox*>(option);
  const auto* row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (element == CE_CheckBox && button) {
    drawCheckbox(*button, *painter);
  } else if (element == CE_PushButton && button) {
    drawPushButton(*button, *painter);
  } else if (element == CE_ComboBoxLabel && popup) {
    painter->setPen(popup->palette.color(QPalette::ButtonText));
    paintLine(*painter, popupTextRect(popup->rect), popup->currentText, TextPlace::Leading);
  } else if (element == CE_MenuItem && row) {
    drawMenuRow(*row, *painter);
  } else if (element == CE_ShapedFrame) {
    // Only a menu whose shape is not a rectangle needs this frame.
    if (widget && widget->isWindow() && !widget->mask().isEmpty()) {
      paintMenuPanel(*painter, option->rect, option->palette);
    }
  } else {
    painter->restore();
    QProxyStyle::drawControl(element, option, painter, widget);
    return;
  }
  painter->restore();
}

void ControlStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
  const auto* popup = qstyleoption_cast<const QStyleOptionComboBox*>(option);
  if (control == CC_Slider && slider) {
    paintSlider(*painter, slider->rect, knobRect(*slider), stateOf(*slider));
  } else if (control == CC_ScrollBar && slider) {
    paintScroller(*painter, scrollerKnobRect(*slider), stateOf(*slider));
  } else if (control == CC_ComboBox && popup) {
    drawPopupButton(*popup, *painter);
  } else if (control == CC_SpinBox) {
    paintField(*painter, option->rect, stateOf(*option));
    paintStepper(*painter, stepperRect(option->rect), option->palette.color(QPalette::Text));
  } else {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
  }
  painter->restore();
}

}  // namespace vembrix
