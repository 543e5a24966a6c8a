#pragma once

#include <gmock/gmock.h>

#include <QAccessible>
#include <QWidget>
#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "menubar/SpaceRow.h"
#include "platform/linux/menubar/VembrixSpaceRowView.h"
#include "platform/linux/support/DropdownUser.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {

inline constexpr Srgb kRed{1, 0, 0};
inline constexpr Srgb kBlue{0, 0, 1};

inline bool areAlike(const QColor& a, const QColor& b, int tolerance = 3) {
  return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance &&
         std::abs(a.blue() - b.blue()) <= tolerance;
}

/// What assistive programs are told of a widget.
struct Told {
  QString name;
  QString description;
};

inline Told toldOf(QWidget& widget) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
  return {interface->text(QAccessible::Name), interface->text(QAccessible::Description)};
}

/// The product's rows, in an open menu.
class VembrixSpaceRowViewTest : public testing::Test {
 protected:
  using Desktop = SpaceRow::Desktop;

  static Desktop desktopOf(const std::string& name) {
    return {.displayName = name, .isActive = false, .dotColor = kRed, .heatGlow = {}};
  }

  /// Opens a menu of these rows and returns the first.
  VembrixSpaceRowView& open(const std::vector<Desktop>& desktops) {
    std::vector<MenuItem> items;
    items.reserve(desktops.size() + 2);
    for (const Desktop& desktop : desktops) items.emplace_back(rowOf(desktop));
    items.emplace_back(MenuSeparator{});
    items.emplace_back(
        MenuCommand{.title = "Quit", .font = {}, .keyEquivalent = "q", .action = [this] {
                      events_.emplace_back("quit");
                    }});
    user_.open(std::move(items));
    return user_.row(0);
  }

  VembrixSpaceRowView& open() {
    return open({desktopOf("Mail"), desktopOf("Web"), desktopOf("Code")});
  }

  /// Returns the first row, whose name is being edited.
  VembrixSpaceRowView& edit() {
    VembrixSpaceRowView& row = open();
    user_.clickPencil(row);
    return row;
  }

  std::unique_ptr<SpaceRowView> rowOf(const Desktop& desktop) {
    return SpaceRow::create(
        desktop,
        {.onSwitch = [this, name = desktop.displayName] { events_.push_back("to " + name); },
         .onCommitRename = [this](std::string_view name) { names_.emplace_back(name); }});
  }

  /// Returns what has happened, after all pending events.
  const std::vector<std::string>& events() {
    runFor(std::chrono::milliseconds(20));
    return events_;
  }

  DropdownUser user_;
  std::vector<std::string> events_;
  std::vector<std::string> names_;
};

}  // namespace vembrix
