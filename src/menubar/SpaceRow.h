#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Color.h"
#include "platform/SpaceRowView.h"

namespace vembrix {

/// What a desktop's row in the dropdown does: it switches there on a click, shows
/// a rename button and a tint under the pointer, and renames in place. Main
/// thread.
class SpaceRow : public SpaceRowHandler {
 public:
  /// The desktop as it was when the menu opened. A rename does not change it.
  struct Desktop {
    std::string displayName;
    bool isActive = false;
    Color dotColor;
    /// Inside the ring of a desktop that is not active.
    std::optional<Color> heatGlow;
  };

  /// Each may be empty, and may end the row.
  struct Actions {
    /// Called when the menu has closed and the event is over, be the row still
    /// there or not.
    std::function<void()> onSwitch;
    /// The text as it was typed, white space included; may be empty.
    std::function<void(std::string_view name)> onCommitRename;
  };

  /// A row in the font of the present theme.
  static std::unique_ptr<SpaceRowView> create(Desktop desktop, Actions actions);

  SpaceRow(std::string displayName, Actions actions);

  void attach(SpaceRowView& view) override { view_ = &view; }
  void setHovered(bool isHovered) override;
  void setHighlighted(bool isHighlighted) override;
  void setShown(bool isShown) override;
  [[nodiscard]] RowPart hitTest(Point point, Size bounds) const override;
  void mouseUp(Point point, Size bounds) override;
  void activate() override;
  void renameClicked() override;
  KeyHandling keyDown(RowKey key) override;
  void commit() override;
  void cancel() override;

 private:
  void showTint();
  void closeAndSwitch();
  /// Shows the label in place of the edit field.
  void endEditing();

  std::string displayName_;
  Actions actions_;
  SpaceRowView* view_ = nullptr;
  /// The label's text, also while the edit field stands in its place.
  std::string label_;
  // Also told while the row is edited, which leaves what is shown as it is.
  bool isHovered_ = false;
  bool isHighlighted_ = false;
  /// What the view shows.
  SpaceRowState state_;
};

/// A disc for the active desktop, a ring for others, which glows inside when the
/// desktop is warm.
DotImage makeDot(const SpaceRow::Desktop& desktop);

// Where the parts of a row of that size are; origin at its bottom left.

Rect editFieldFrame(Size bounds);
Rect renameButtonFrame(Size bounds);

}  // namespace vembrix
