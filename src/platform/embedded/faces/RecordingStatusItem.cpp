#include "platform/embedded/faces/RecordingStatusItem.h"

#include "platform/embedded/faces/RecordingDropdownMenu.h"

namespace vembrix {
namespace {

RecordingStatusItem* currentItem = nullptr;
bool buttonGiven = true;

}  // namespace

std::unique_ptr<StatusItem> StatusItem::create() {
  return std::make_unique<RecordingStatusItem>();
}

RecordingStatusItem* RecordingStatusItem::current() {
  return currentItem;
}
void RecordingStatusItem::giveButton(bool given) {
  buttonGiven = given;
}

RecordingStatusItem::RecordingStatusItem() : hasButton_(buttonGiven) {
  currentItem = this;
}

RecordingStatusItem::~RecordingStatusItem() {
  if (currentItem == this) currentItem = nullptr;
}

void RecordingStatusItem::setContent(const StatusItemContent& content) {
  setCount_ += 1;
  if (content_ == content) return;
  changeCount_ += 1;
  content_ = content;
}

void RecordingStatusItem::openMenu() {
  // Every menu comes from DropdownMenu::create().
  if (menu_) static_cast<RecordingDropdownMenu&>(*menu_).open();
}

std::string RecordingStatusItem::title() const {
  if (const auto* plain = std::get_if<StatusItemContent::PlainTitle>(&content_.label)) {
    return plain->text;
  }
  if (const auto* attributed = std::get_if<StatusItemContent::AttributedTitle>(&content_.label)) {
    return attributed->text;
  }
  return {};
}

std::optional<Color> RecordingStatusItem::textColor() const {
  const auto* attributed = std::get_if<StatusItemContent::AttributedTitle>(&content_.label);
  return attributed ? std::optional(attributed->color) : std::nullopt;
}

}  // namespace vembrix
