#include "platform/embedded/faces/RecordingSpaceRowView.h"

#include <utility>

#include "platform/embedded/faces/RecordingDropdownMenu.h"
#include "platform/portable/Utf8.h"

namespace vembrix {
namespace {

int liveRows = 0;

Point middleOf(const Rect& rect) {
  return {rect.x + rect.width / 2, rect.y + rect.height / 2};
}

}  // namespace

std::unique_ptr<SpaceRowView> SpaceRowView::create(SpaceRowContent content, SpaceRowState state,
                                                   std::unique_ptr<SpaceRowHandler> handler) {
  return std::make_unique<RecordingSpaceRowView>(std::move(content), std::move(state),
                                                 std::move(handler));
}

int RecordingSpaceRowView::liveCount() {
  return liveRows;
}

RecordingSpaceRowView::RecordingSpaceRowView(SpaceRowContent content, SpaceRowState state,
                                             std::unique_ptr<SpaceRowHandler> handler)
    : content_(std::move(content)), state_(std::move(state)), handler_(std::move(handler)) {
  liveRows += 1;
  handler_->attach(*this);
}

RecordingSpaceRowView::~RecordingSpaceRowView() {
  liveRows -= 1;
}

void RecordingSpaceRowView::setState(const SpaceRowState& state) {
  if (state == state_) return;
  changeCount_ += 1;
  if (state.isEditing && !state_.isEditing) {
    if (menu_) menu_->cancelEditing();
    editedText_ = state.label;
    isAllSelected_ = true;
  }
  state_ = state;
}

void RecordingSpaceRowView::closeMenu() {
  if (menu_) menu_->close();
}

void RecordingSpaceRowView::click(Point point) {
  switch (partAt(point)) {
    case RowPart::None:
      break;
    case RowPart::Row:
      handler_->mouseUp(point, bounds_);
      break;
    case RowPart::EditField:
      isAllSelected_ = false;
      break;
    case RowPart::RenameButton:
      handler_->renameClicked();
      break;
  }
}

void RecordingSpaceRowView::clickDot() {
  click(middleOf(layOutRow(bounds_).dot));
}

void RecordingSpaceRowView::clickName() {
  click(middleOf(layOutRow(bounds_).label));
}

void RecordingSpaceRowView::clickPencil() {
  click(middleOf(layOutRow(bounds_).renameButton));
}

KeyHandling RecordingSpaceRowView::press(RowKey key) {
  if (!state_.isEditing) return KeyHandling::Passed;
  const KeyHandling handling = handler_->keyDown(key);
  if (handling == KeyHandling::Interpreted) {
    if (key == RowKey::Return || key == RowKey::KeypadEnter) handler_->commit();
    if (key == RowKey::Escape) handler_->cancel();
  }
  return handling;
}

bool RecordingSpaceRowView::takesKey() {
  return press(RowKey::Other) == KeyHandling::Interpreted && state_.isEditing;
}

void RecordingSpaceRowView::type(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = firstCharacter(text).length;
    if (takesKey()) insert(text.substr(0, length));
    text.remove_prefix(length);
  }
}

void RecordingSpaceRowView::pressDelete() {
  if (!takesKey()) return;
  if (std::exchange(isAllSelected_, false)) {
    editedText_.clear();
    return;
  }
  std::size_t last = 0;
  for (std::size_t at = 0; at < editedText_.size();) {
    last = at;
    at += firstCharacter(std::string_view(editedText_).substr(at)).length;
  }
  editedText_.resize(last);
}

void RecordingSpaceRowView::insert(std::string_view text) {
  if (!state_.isEditing) return;
  if (std::exchange(isAllSelected_, false)) editedText_.clear();
  editedText_.append(text);
}

}  // namespace vembrix
