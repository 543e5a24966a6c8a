#include "platform/linux/ui/SettingsAccessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QColor>

#include "platform/linux/ui/ColorWell.h"
#include "platform/linux/ui/SliderControl.h"
#include "platform/linux/ui/TabButtonView.h"

namespace vembrix {
namespace {

/// Of the arrow keys, for who asks.
constexpr double kStepsInRange = 100;

class AccessibleSlider : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit AccessibleSlider(SliderControl* slider)
      : QAccessibleWidget(slider, QAccessible::Slider), slider_(*slider) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) return QString::number(slider_.number());
    return QAccessibleWidget::text(kind);
  }

  [[nodiscard]] QVariant currentValue() const override { return slider_.number(); }
  void setCurrentValue(const QVariant& value) override { slider_.moveTo(value.toDouble()); }
  [[nodiscard]] QVariant maximumValue() const override { return slider_.maximumNumber(); }
  [[nodiscard]] QVariant minimumValue() const override { return slider_.minimumNumber(); }
  [[nodiscard]] QVariant minimumStepSize() const override {
    return (slider_.maximumNumber() - slider_.minimumNumber()) / kStepsInRange;
  }

 private:
  SliderControl& slider_;
};

/// A button of another role.
class AccessibleButton : public QAccessibleWidget {
 public:
  AccessibleButton(QAbstractButton* button, QAccessible::Role role)
      : QAccessibleWidget(button, role), button_(*button) {}

  [[nodiscard]] QStringList actionNames() const override {
    return QStringList(pressAction()) + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name == pressAction()) {
      button_.click();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  QAbstractButton& button_;
};

class AccessibleTab : public AccessibleButton {
 public:
  explicit AccessibleTab(TabButtonView* tab)
      : AccessibleButton(tab, QAccessible::PageTab), tab_(*tab) {}

  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = AccessibleButton::state();
    state.selectable = true;
    state.selected = tab_.isSelected();
    return state;
  }

 private:
  TabButtonView& tab_;
};

class AccessibleColorWell : public AccessibleButton {
 public:
  explicit AccessibleColorWell(ColorWell* well)
      : AccessibleButton(well, QAccessible::ColorChooser), well_(*well) {}

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) return well_.shownColor().name();
    return AccessibleButton::text(kind);
  }

 private:
  ColorWell& well_;
};

/// Qt owns what it returns.
QAccessibleInterface* describe(const QString& /*className*/, QObject* object) {
  if (auto* slider = qobject_cast<SliderControl*>(object)) return new AccessibleSlider(slider);
  if (auto* tab = qobject_cast<TabButtonView*>(object)) return new AccessibleTab(tab);
  if (auto* well = qobject_cast<ColorWell*>(object)) return new AccessibleColorWell(well);
  return nullptr;
}

}  // namespace

void describeSettingsControls() {
  // Qt keeps a factory once, however often it is given.
  QAccessible::installFactory(describe);
}

}  // namespace vembrix
