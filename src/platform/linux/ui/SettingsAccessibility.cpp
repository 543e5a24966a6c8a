#include "platform/linux/ui/SettingsAccessibility.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QColor>

#include "platform/linux/ui/ColorWell.h"
#include "platform/linux/ui/controls/PillTabButton.h"
#include "platform/linux/ui/controls/PopupButton.h"
#include "platform/linux/ui/controls/SliderControl.h"

namespace vembrix {
namespace {

/// The number of an arrow key's steps in a slider's range, as reported to assistive programs.
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

/// Describes a button that has another role.
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
  explicit AccessibleTab(PillTabButton* tab)
      : AccessibleButton(tab, QAccessible::PageTab), tab_(*tab) {}

  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = AccessibleButton::state();
    state.selectable = true;
    state.selected = tab_.isSelected();
    return state;
  }

 private:
  PillTabButton& tab_;
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

/// Describes a pop-up button by its label's text. Qt names it by the chosen item.
class AccessiblePopup : public QAccessibleWidget {
 public:
  explicit AccessiblePopup(PopupButton* popup)
      : QAccessibleWidget(popup, QAccessible::ComboBox), popup_(*popup) {}

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    // Assistive programs present the description beside the name.
    const bool isChoice = kind == QAccessible::Value || kind == QAccessible::Description;
    return isChoice ? popup_.currentText() : QAccessibleWidget::text(kind);
  }

  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = popup_.view()->isVisible();
    return state;
  }

  // The only child is the list of choices.
  [[nodiscard]] int childCount() const override { return 1; }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(popup_.view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child && child->object() == popup_.view() ? 0 : -1;
  }

  [[nodiscard]] QStringList actionNames() const override {
    return QStringList(showMenuAction()) + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name != showMenuAction()) {
      QAccessibleWidget::doAction(name);
    } else if (popup_.view()->isVisible()) {
      popup_.hidePopup();
    } else {
      popup_.showPopup();
    }
  }

 private:
  PopupButton& popup_;
};

/// Creates the description of an object. Qt owns it.
QAccessibleInterface* describe(const QString& /*className*/, QObject* object) {
  if (auto* slider = qobject_cast<SliderControl*>(object)) return new AccessibleSlider(slider);
  if (auto* tab = qobject_cast<PillTabButton*>(object)) return new AccessibleTab(tab);
  if (auto* popup = dynamic_cast<PopupButton*>(object)) return new AccessiblePopup(popup);
  if (auto* well = qobject_cast<ColorWell*>(object)) return new AccessibleColorWell(well);
  // Qt describes only its own classes of dialogs as dialogs.
  auto* widget = qobject_cast<QWidget*>(object);
  if (widget && widget->windowRole() == QLatin1String("settings")) {
    return new QAccessibleWidget(widget, QAccessible::Dialog);
  }
  return nullptr;
}

}  // namespace

void describeSettingsControls() {
  // Qt ignores a factory that is installed already.
  QAccessible::installFactory(describe);
}

}  // namespace vembrix
