#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Color.h"
#include "platform/SpaceRowView.h"

namespace vembrix {

struct AppTheme;

/// A desktop's row in the dropdown: switches to the desktop on a click, shows a rename button and a
/// tint under the pointer, and edits the name in place. Main thread.
class SpaceRow : public SpaceRowHandler {
 public:
  /// The desktop when the menu opened. A rename does not change it.
  struct Desktop {
    std::string displayName;
    bool isActive = false;
    Color dotColor;
    /// The fill of the ring of an inactive desktop.
    std::optional<Color> heatGlow;
  };

  /// Each may be empty, and may destroy the row.
  struct Actions {
    /// Called after the menu has closed and the event has ended, even if the row is gone.
    std::function<void()> onSwitch;
    /// Receives the text as typed, white space included; may be empty.
    std::function<void(std::string_view name)> onCommitRename;
  };

  /// Creates a row in the current theme's font.
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
  /// Replaces the edit field by the label.
  void endEditing();

  std::string displayName_;
  Actions actions_;
  SpaceRowView* view_ = nullptr;
  /// The label's text, also while the edit field replaces it.
  std::string label_;
  // Also updated, without a visible effect, while the row is edited.
  bool isHovered_ = false;
  bool isHighlighted_ = false;
  /// The state that the view shows.
  SpaceRowState state_;
};

/// Returns the theme's tint of what is selected in the dropdown.
Color selectionTint(const AppTheme& theme);

/// Returns a disc for the active desktop, else a ring, with a glow inside when the desktop is warm.
DotImage makeDot(const SpaceRow::Desktop& desktop);

}  // namespace vembrix
