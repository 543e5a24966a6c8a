#include "menubar/SpaceRow.h"

#include <utility>

#include "platform/MainQueue.h"
#include "settings/PreferencesStore.h"
#include "spaces/Whitespace.h"

namespace vembrix {
namespace {

constexpr double kTintAlpha = 0.16;
constexpr double kRingInset = 1;
constexpr double kRingWidth = 1.5;

Font labelFont(bool isActive) {
  return PreferencesStore::shared().theme().font(isActive ? Font::Weight::Semibold
                                                          : Font::Weight::Regular);
}

std::string dotDescription(const SpaceRow::Desktop& desktop) {
  if (desktop.isActive) return "current";
  return desktop.heatGlow ? "recently used" : "";
}

}  // namespace

Color selectionTint(const AppTheme& theme) {
  return theme.accent.withAlpha(kTintAlpha);
}

DotImage makeDot(const SpaceRow::Desktop& desktop) {
  constexpr double kSize = row_metrics::kDotSize;
  constexpr double kRing = kSize - 2 * kRingInset;
  DotImage::Oval oval;
  if (desktop.isActive) {
    oval.rect = {0, 0, kSize, kSize};
    oval.fill = desktop.dotColor;
  } else {
    oval.rect = {kRingInset, kRingInset, kRing, kRing};
    oval.fill = desktop.heatGlow;
    oval.stroke = desktop.dotColor;
    oval.lineWidth = kRingWidth;
  }
  return {{kSize, kSize}, {oval}};
}

std::unique_ptr<SpaceRowView> SpaceRow::create(Desktop desktop, Actions actions) {
  SpaceRowContent content{.dot = makeDot(desktop),
                          .dotDescription = dotDescription(desktop),
                          .isActive = desktop.isActive,
                          .font = labelFont(desktop.isActive),
                          .renameTitle = "Rename"};
  SpaceRowState state;
  state.label = desktop.displayName;
  return SpaceRowView::create(
      std::move(content), std::move(state),
      std::make_unique<SpaceRow>(std::move(desktop.displayName), std::move(actions)));
}

SpaceRow::SpaceRow(std::string displayName, Actions actions)
    : displayName_(std::move(displayName)), actions_(std::move(actions)), label_(displayName_) {
  state_.label = displayName_;
}

void SpaceRow::setHovered(bool isHovered) {
  isHovered_ = isHovered;
  if (state_.isEditing) return;
  state_.showsRenameButton = isHovered;
  showTint();
}

void SpaceRow::setHighlighted(bool isHighlighted) {
  isHighlighted_ = isHighlighted;
  if (!state_.isEditing) showTint();
}

void SpaceRow::setShown(bool isShown) {
  if (isShown) return;
  isHighlighted_ = false;
  setHovered(false);
}

RowPart SpaceRow::hitTest(Point point, Size bounds) const {
  if (!contains({0, 0, bounds.width, bounds.height}, point)) return RowPart::None;
  const SpaceRowLayout layout = layOutRow(bounds);
  if (state_.isEditing && contains(layout.editField, point)) return RowPart::EditField;
  if (state_.showsRenameButton && contains(layout.renameButton, point)) {
    return RowPart::RenameButton;
  }
  return RowPart::Row;
}

void SpaceRow::mouseUp(Point point, Size bounds) {
  if (state_.isEditing) return;
  // The button handles its own clicks.
  if (state_.showsRenameButton && contains(layOutRow(bounds).renameButton, point)) return;
  closeAndSwitch();
}

void SpaceRow::activate() {
  if (!state_.isEditing) closeAndSwitch();
}

void SpaceRow::renameClicked() {
  if (state_.isEditing) return;
  state_.isEditing = true;
  state_.showsRenameButton = false;
  // The name at the opening of the menu, also after a rename.
  state_.label = displayName_;
  view_->setState(state_);
}

KeyHandling SpaceRow::keyDown(RowKey key) {
  if (!state_.isEditing) return KeyHandling::Passed;
  switch (key) {
    case RowKey::Return:
    case RowKey::KeypadEnter:
      commit();
      return KeyHandling::Swallowed;
    case RowKey::Escape:
      cancel();
      return KeyHandling::Swallowed;
    case RowKey::Other:
      break;
  }
  return KeyHandling::Interpreted;
}

void SpaceRow::commit() {
  if (!state_.isEditing) return;
  const std::string raw = view_->editedText();
  // Shown as typed, so that the text does not move when editing ends.
  label_ = trimWhitespace(raw).empty() ? displayName_ : raw;
  endEditing();
  const auto report = actions_.onCommitRename;
  if (report) report(raw);
}

void SpaceRow::cancel() {
  if (state_.isEditing) endEditing();
}

void SpaceRow::showTint() {
  if (isHovered_ || isHighlighted_) {
    state_.background = selectionTint(PreferencesStore::shared().theme());
  } else {
    state_.background.reset();
  }
  view_->setState(state_);
}

void SpaceRow::closeAndSwitch() {
  // Closing the menu may destroy the row.
  auto onSwitch = actions_.onSwitch;
  view_->closeMenu();
  if (onSwitch) MainQueue::main().async(std::move(onSwitch));
}

void SpaceRow::endEditing() {
  state_.isEditing = false;
  state_.showsRenameButton = false;
  state_.label = label_;
  showTint();
}

}  // namespace vembrix
