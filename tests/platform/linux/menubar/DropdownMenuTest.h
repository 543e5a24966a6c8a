#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QMenu>
#include <QPalette>
#include <chrono>
#include <string>
#include <vector>

#include "menubar/SpaceRow.h"
#include "platform/Application.h"
#include "platform/DropdownMenu.h"
#include "platform/linux/support/DropdownUser.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {

/// A dropdown with rows and commands, and a record of the chosen ones.
class DropdownMenuTest : public testing::Test {
 protected:
  QMenu& widget() { return user_.widget(); }
  QColor ground() { return widget().palette().color(QPalette::Window); }
  QColor text() { return widget().palette().color(QPalette::WindowText); }
  bool isDark() { return text().lightnessF() > ground().lightnessF(); }

  static void useWidgets(const QColor& ground, const QColor& text) {
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, text);
    QApplication::setPalette(palette);
  }

  /// A row of the product that records when it is chosen.
  MenuItem rowOf(const std::string& name) {
    return SpaceRow::create(
        {.displayName = name, .isActive = false, .dotColor = kBlack, .heatGlow = {}},
        {.onSwitch = [this, name] { tell(name); }, .onCommitRename = {}});
  }

  MenuItem commandOf(const std::string& title, const std::string& key) {
    return MenuCommand{
        .title = title, .font = {}, .keyEquivalent = key, .action = [this, title] { tell(title); }};
  }

  /// Returns rows of these names and the commands below them.
  std::vector<MenuItem> itemsOf(const std::vector<std::string>& names) {
    std::vector<MenuItem> items;
    items.reserve(names.size() + 4);
    for (const std::string& name : names) items.push_back(rowOf(name));
    items.emplace_back(MenuSeparator{});
    items.push_back(commandOf("Preferences", ","));
    items.emplace_back(MenuSeparator{});
    items.push_back(commandOf("Quit", "q"));
    return items;
  }

  /// Returns the items for that many desktops, named by their numbers from 1.
  std::vector<MenuItem> manyItems(int count) {
    std::vector<std::string> names;
    for (int number = 1; number <= count; ++number) names.push_back(std::to_string(number));
    return itemsOf(names);
  }

  void tell(const std::string& what) {
    events_.push_back(what + (user_.isOpen() ? ", open" : ", closed"));
  }

  /// Returns what has happened, after all pending events.
  const std::vector<std::string>& events() {
    runFor(std::chrono::milliseconds(20));
    return events_;
  }

  DropdownUser user_;
  DropdownMenu* menu_ = &user_.menu();
  std::vector<std::string> events_;
};

}  // namespace vembrix
