#include "platform/embedded/faces/RecordingDropdownMenu.h"

#include <algorithm>
#include <utility>

#include "platform/Application.h"
#include "platform/SystemLog.h"

namespace vembrix {
namespace {

RecordingSpaceRowView* asRow(const MenuItem& item) {
  const auto* row = std::get_if<std::unique_ptr<SpaceRowView>>(&item);
  return row ? static_cast<RecordingSpaceRowView*>(row->get()) : nullptr;
}

}  // namespace

std::unique_ptr<DropdownMenu> DropdownMenu::create() {
  return std::make_unique<RecordingDropdownMenu>();
}

void RecordingDropdownMenu::setNeedsUpdateHandler(std::function<void()> handler) {
  needsUpdate_ = std::move(handler);
}

void RecordingDropdownMenu::setItems(std::vector<MenuItem> items) {
  if (isOpen_) programmingError("the items of an open menu were set");
  highlighted_.reset();
  items_ = std::move(items);
  for (RecordingSpaceRowView* row : rows()) row->menu_ = this;
}

std::vector<std::string> RecordingDropdownMenu::titles() const {
  std::vector<std::string> titles;
  for (const MenuItem& item : items_) {
    if (const RecordingSpaceRowView* row = asRow(item)) {
      titles.push_back(row->state().label);
    } else if (const auto* command = std::get_if<MenuCommand>(&item)) {
      titles.push_back(command->title);
    } else {
      titles.emplace_back("-");
    }
  }
  return titles;
}

std::vector<RecordingSpaceRowView*> RecordingDropdownMenu::rows() const {
  std::vector<RecordingSpaceRowView*> rows;
  for (const MenuItem& item : items_) {
    if (RecordingSpaceRowView* row = asRow(item)) rows.push_back(row);
  }
  return rows;
}

const MenuCommand* RecordingDropdownMenu::command(std::string_view title) const {
  for (const MenuItem& item : items_) {
    const auto* command = std::get_if<MenuCommand>(&item);
    if (command && command->title == title) return command;
  }
  return nullptr;
}

void RecordingDropdownMenu::open() {
  if (isOpen_) return;
  if (needsUpdate_) needsUpdate_();
  isOpen_ = true;
  for (RecordingSpaceRowView* row : rows()) row->handler().setShown(true);
}

void RecordingDropdownMenu::close() {
  if (!isOpen_) return;
  highlight(std::nullopt);
  isOpen_ = false;
  for (RecordingSpaceRowView* row : rows()) row->handler().setShown(false);
}

void RecordingDropdownMenu::highlight(std::optional<std::size_t> place) {
  if (!isOpen_ || place == highlighted_) return;
  if (RecordingSpaceRowView* row = rowAt(highlighted_)) row->handler().setHighlighted(false);
  highlighted_ = place;
  if (RecordingSpaceRowView* row = rowAt(highlighted_)) row->handler().setHighlighted(true);
}

void RecordingDropdownMenu::press(RowKey key) {
  if (!isOpen_ || pressInRow(key)) return;
  if (key == RowKey::Escape) close();
  if (key != RowKey::Return && key != RowKey::KeypadEnter) return;
  if (RecordingSpaceRowView* row = rowAt(highlighted_)) {
    row->handler().activate();
  } else if (highlighted_ && *highlighted_ < items_.size()) {
    if (const auto* command = std::get_if<MenuCommand>(&items_[*highlighted_])) choose(*command);
  }
}

void RecordingDropdownMenu::pressKeyEquivalent(std::string_view key) {
  if (!isOpen_ || pressInRow(RowKey::Other)) return;
  for (const MenuItem& item : items_) {
    const auto* command = std::get_if<MenuCommand>(&item);
    if (command && command->keyEquivalent == key) return choose(*command);
  }
}

void RecordingDropdownMenu::choose(std::string_view title) {
  const MenuCommand* chosen = command(title);
  if (isOpen_ && chosen) choose(*chosen);
}

void RecordingDropdownMenu::cancelEditing() {
  for (RecordingSpaceRowView* row : rows()) {
    if (row->state().isEditing) row->handler().cancel();
  }
}

RecordingSpaceRowView* RecordingDropdownMenu::rowAt(std::optional<std::size_t> place) const {
  return place && *place < items_.size() ? asRow(items_[*place]) : nullptr;
}

bool RecordingDropdownMenu::pressInRow(RowKey key) {
  const auto edited = rows();
  return std::ranges::any_of(
      edited, [key](RecordingSpaceRowView* row) { return row->press(key) != KeyHandling::Passed; });
}

void RecordingDropdownMenu::choose(const MenuCommand& command) {
  // A copy, because the action may replace the items.
  const auto action = command.action;
  close();
  if (const auto* run = std::get_if<std::function<void()>>(&action)) {
    (*run)();
  } else {
    Application::shared().terminate();
  }
}

}  // namespace vembrix
