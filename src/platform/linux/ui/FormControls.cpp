#include "platform/linux/ui/FormControls.h"

#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>

#include "platform/linux/Conversions.h"
#include "platform/linux/TextMetrics.h"
#include "platform/linux/ui/ColorGridView.h"
#include "platform/linux/ui/controls/CheckboxButton.h"
#include "platform/linux/ui/controls/ColorFollower.h"
#include "platform/linux/ui/controls/ControlPainting.h"
#include "platform/linux/ui/controls/ControlStyle.h"
#include "platform/linux/ui/controls/LineLabel.h"
#include "platform/linux/ui/controls/PopupButton.h"
#include "platform/linux/ui/controls/SelectableLine.h"
#include "platform/linux/ui/controls/SliderControl.h"

namespace vembrix {
namespace {

QString titleOf(const std::string& text) {
  // Doubled, because Qt takes a single "&" for a mnemonic.
  return QString::fromStdString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

void setTextStyle(QWidget& widget, const TextStyle& style) {
  widget.setFont(nativeFont(style.font));
  followTextColor(widget, style.color);
}

/// Gives the control the keyboard with the Tab key only, as on macOS: a click does not move the
/// keyboard focus.
template <typename Control>
void setControlStyle(Control& control, const TextStyle& style) {
  control.setStyle(&ControlStyle::shared());
  control.setFocusPolicy(Qt::TabFocus);
  setTextStyle(control, style);
}

int baselineInMiddle(const QWidget& widget) {
  return centeredBaseline(widget.font(), widget.sizeHint().height());
}

template <typename Label>
Label* makeLabel(const std::string& text, const TextStyle& style, QWidget* parent) {
  auto* label = new Label(parent);
  label->setTextFormat(Qt::PlainText);
  setTextStyle(*label, style);
  label->setText(QString::fromStdString(text));
  return label;
}

struct Builder {
  QWidget* parent;

  BuiltControl operator()(const Slider& slider) const {
    auto* control = new SliderControl(slider, parent);
    return {control, baselineInMiddle(*control)};
  }

  BuiltControl operator()(const Checkbox& checkbox) const {
    auto* control = new CheckboxButton(titleOf(checkbox.title), parent);
    setControlStyle(*control, checkbox.style);
    control->setAccessibleName(QString::fromStdString(checkbox.title));
    control->setChecked(checkbox.isOn);
    QObject::connect(control, &QCheckBox::toggled, control,
                     [report = checkbox.onChange](bool isOn) {
                       if (report) report(isOn);
                     });
    return {control, baselineInMiddle(*control)};
  }

  BuiltControl operator()(const Popup& popup) const {
    auto* control = new PopupButton(popup, parent);
    setTextStyle(*control, popup.style);
    return {control, baselineInMiddle(*control)};
  }

  BuiltControl operator()(const WrappingLabel& wrapping) const {
    auto* label = makeLabel<QLabel>(wrapping.text, wrapping.style, parent);
    label->setWordWrap(true);
    return {label, QFontMetrics(label->font()).ascent()};
  }

  BuiltControl operator()(const Header& header) const {
    return buildLabel(header.text, header.style, parent);
  }

  BuiltControl operator()(const ColorGrid& grid) const {
    return {new ColorGridView(grid, parent), 0};
  }

  BuiltControl operator()(const PushButton& button) const {
    auto* control = new QPushButton(titleOf(button.title), parent);
    setControlStyle(*control, button.style);
    control->setAccessibleName(QString::fromStdString(button.title));
    if (button.bezel == PushButton::Bezel::Link) {
      control->setFlat(true);
      control->setCursor(Qt::PointingHandCursor);
    }
    control->setEnabled(button.isEnabled);
    QObject::connect(control, &QPushButton::clicked, control, [action = button.action] {
      if (action) action();
    });
    return {control,
            control->isFlat() ? lineBaseline(control->font()) : baselineInMiddle(*control)};
  }

  BuiltControl operator()(const SelectableText& text) const {
    auto* line = new SelectableLine(text.text, SelectableLine::Bezel::None, parent);
    setTextStyle(*line, text.style);
    line->setAccessibleName(QString::fromStdString(text.accessibleName));
    return {line, line->baseline()};
  }

  BuiltControl operator()(const CommandField& command) const {
    auto* field = new SelectableLine(command.text, SelectableLine::Bezel::Rounded, parent);
    setTextStyle(*field, command.style);
    field->setAccessibleName(QString::fromStdString(command.accessibleName));
    return {field, field->baseline()};
  }

  BuiltControl operator()(const StatusLabel& status) const {
    auto* label = makeLabel<LineLabel>(status.text, status.style, parent);
    return {label, label->baseline()};
  }
};

}  // namespace

BuiltControl buildControl(const FormControl& control, QWidget* parent) {
  return std::visit(Builder{parent}, control);
}

BuiltControl buildLabel(const std::string& text, const TextStyle& style, QWidget* parent) {
  auto* label = makeLabel<LineLabel>(text, style, parent);
  return {label, label->baseline()};
}

}  // namespace vembrix
