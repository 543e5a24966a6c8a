#pragma once

#include <string>
#include <string_view>

#include "platform/SpaceRowView.h"

namespace vembrix {

class RecordingDropdownMenu;

/// A row that records its state and that a test uses as a user does. Its edit field has a caret at
/// the end of the text, or all of the text selected.
class RecordingSpaceRowView : public SpaceRowView {
 public:
  /// Rows that exist now.
  static int liveCount();

  RecordingSpaceRowView(SpaceRowContent content, SpaceRowState state,
                        std::unique_ptr<SpaceRowHandler> handler);
  ~RecordingSpaceRowView() override;
  RecordingSpaceRowView(const RecordingSpaceRowView&) = delete;
  RecordingSpaceRowView& operator=(const RecordingSpaceRowView&) = delete;

  void setState(const SpaceRowState& state) override;
  std::string editedText() const override { return editedText_; }
  void closeMenu() override;

  const SpaceRowContent& content() const { return content_; }
  const SpaceRowState& state() const { return state_; }
  /// Number of times that the state has changed.
  int changeCount() const { return changeCount_; }
  SpaceRowHandler& handler() { return *handler_; }
  /// The row's size; initially row_metrics::kSize.
  Size bounds() const { return bounds_; }
  void setBounds(Size bounds) { bounds_ = bounds; }
  bool isAllSelected() const { return isAllSelected_; }

  // The actions of a user.

  void hover() { handler_->setHovered(true); }
  void leave() { handler_->setHovered(false); }
  RowPart partAt(Point point) const { return handler_->hitTest(point, bounds_); }
  /// Presses and releases the button of the mouse there: on the rename button,
  /// which acts by itself, in the edit field, where it sets the caret, or on the
  /// row.
  void click(Point point);
  /// Clicks in the middle of the dot, the text or the rename button, visible or not.
  void clickDot();
  void clickName();
  void clickPencil();

  /// Presses a key while the menu is open: passes it to the handler, then to the edit field if the
  /// handler passes it on. Returns the handler's answer.
  KeyHandling press(RowKey key);
  /// Presses a key for each of the characters.
  void type(std::string_view text);
  /// Presses the key that deletes what is selected, or the last character.
  void pressDelete();
  /// Puts text into the edit field without a key: pasted, dropped, or composed by
  /// an input method.
  void insert(std::string_view text);

 private:
  friend class RecordingDropdownMenu;

  /// Whether a key press reaches the text of the edit field.
  bool takesKey();

  SpaceRowContent content_;
  SpaceRowState state_;
  std::unique_ptr<SpaceRowHandler> handler_;
  /// Null if no menu holds the row.
  RecordingDropdownMenu* menu_ = nullptr;
  Size bounds_ = row_metrics::kSize;
  std::string editedText_;
  bool isAllSelected_ = false;
  int changeCount_ = 0;
};

}  // namespace vembrix
