#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QWidget>
#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/Application.h"
#include "platform/SettingsWindow.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {

inline constexpr Srgb kRed{1, 0, 0};
inline constexpr Srgb kBlue{0, 0, 1};

inline SettingsTab tabOf(std::vector<FormRow> rows) {
  return {.identifier = "tab", .label = "Tab", .form = {.rows = std::move(rows)}};
}

inline NavigationLayout pills() {
  NavigationLayout layout;
  layout.spacing = 4;
  layout.top = 38;
  layout.content = {.top = 78, .leading = 16, .bottom = 16, .trailing = 16};
  return layout;
}

inline NavigationLayout sidebar() {
  NavigationLayout layout;
  layout.axis = NavigationLayout::Axis::Vertical;
  layout.spacing = 2;
  layout.top = 48;
  layout.leading = 12;
  layout.buttonWidth = 128;
  layout.separator = NavigationLayout::Separator{.leading = 150, .width = 1, .color = kRed};
  layout.content = {.top = 40, .leading = 163, .bottom = 14, .trailing = 14};
  return layout;
}

inline std::vector<TabButton> buttonsOf(const std::vector<std::string>& texts,
                                        std::size_t selected = 0) {
  std::vector<TabButton> buttons;
  for (const std::string& text : texts) {
    TabButton button;
    button.text = text;
    button.style.font.size = 12.5;
    button.isSelected = buttons.size() == selected;
    buttons.push_back(button);
  }
  return buttons;
}

inline SettingsContent themedWith(SettingsTab tab, const NavigationLayout& navigation = pills()) {
  ThemedContent body;
  body.rootSize = {600, 548};
  body.backdrop = Color(kWhite);
  body.navigation = navigation;
  body.page = {buttonsOf({"One", "Two", "Three"}), std::move(tab)};
  WindowChrome chrome;
  chrome.appearance = Appearance::Light;
  chrome.hasFullSizeContent = true;
  return {chrome, std::move(body)};
}

inline SettingsContent plainWith(std::vector<SettingsTab> tabs, std::size_t selected = 0) {
  return {WindowChrome{}, PlainContent{{600, 520}, 12, std::move(tabs), selected}};
}

inline FormRow row(FormControl control) {
  return ControlRow{.label = "Label:",
                    .labelStyle = {},
                    .control = std::move(control),
                    .controlWidth = 220,
                    .alignment = RowAlignment::Centered};
}
inline FormRow full(FormControl control) {
  return FullRow{.control = std::move(control)};
}

inline Checkbox boxOf(const std::string& title) {
  return {title, false, {}, {}};
}
/// A popup with one item, which is not chosen.
inline Popup popupOf(const std::string& name) {
  return {{"A"}, std::nullopt, {}, {}, name};
}
inline PushButton buttonOf(const std::string& title, std::function<void()> action = {}) {
  return {title, std::move(action), PushButton::Bezel::Rounded, {}, true, {}};
}
inline CommandField commandOf(const std::string& name, const std::string& text = {}) {
  CommandField field;
  field.text = text;
  field.accessibleName = name;
  return field;
}

/// A settings window whose content the test makes.
class SettingsWindowTest : public testing::Test {
 protected:
  SettingsWindowTest() {
    TestSession::useNoScreen();
    window_ = SettingsWindow::create({600, 520}, "Vembrix Preferences");
  }
  ~SettingsWindowTest() override { clearRetired(); }

  void show(SettingsContent content) {
    window_->setContent(std::move(content));
    window_->show();
    ASSERT_TRUE(runUntil([] { return widget().isActiveWindow(); }));
  }
  /// Shows a themed page of these rows.
  void show(std::vector<FormRow> rows) { show(themedWith(tabOf(std::move(rows)))); }

  /// Deletes what the event loop would delete after the current events.
  static void clearRetired() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  static QWidget& widget() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->windowRole() == "settings") return *widget;
    }
    throw std::runtime_error("no window");
  }

  /// Returns the first control of that kind, or the one with that accessible name.
  template <typename Control>
  static Control& control(const QString& name = {}) {
    for (auto* found : widget().findChildren<Control*>()) {
      if (name.isNull() || found->accessibleName() == name) return *found;
    }
    throw std::runtime_error("no such control");
  }

  static QString focusedName() {
    const QWidget* focused = widget().focusWidget();
    return focused ? focused->accessibleName() : QString();
  }

  static QRgb pixel(const QPoint& place) { return widget().grab().toImage().pixel(place); }

  TestSession session_;
  std::unique_ptr<SettingsWindow> window_;
};

/// How often the widget is painted while nobody does anything.
inline int paintingsAtRest(QWidget& widget) {
  class Counter : public QObject {
   public:
    bool eventFilter(QObject* /*object*/, QEvent* event) override {
      if (event->type() == QEvent::Paint) count += 1;
      return false;
    }
    int count = 0;
  };
  runFor(std::chrono::milliseconds(50));
  Counter counter;
  widget.installEventFilter(&counter);
  widget.update();
  runFor(std::chrono::milliseconds(200));
  return counter.count;
}

}  // namespace vembrix
