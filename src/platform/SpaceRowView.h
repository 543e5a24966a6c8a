#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/Geometry.h"

namespace vembrix {

/// A small drawing made of ovals, painted in their order.
struct DotImage {
  struct Oval {
    /// Origin at the image's bottom left.
    Rect rect;
    std::optional<Color> fill;
    /// Painted over the fill, half of it on either side of the oval's edge.
    std::optional<Color> stroke;
    /// In points; counts with a stroke only.
    double lineWidth = 0;
    bool operator==(const Oval&) const = default;
  };

  Size size;
  std::vector<Oval> ovals;

  bool operator==(const DotImage&) const = default;
};

/// Where the parts of a row stand, in points; the same on every system. The
/// parts are centred over the height.
namespace row_metrics {
inline constexpr Size kSize{220, 24};
/// Of the tint behind a row.
inline constexpr double kCornerRadius = 4;
/// Of the dot, a square.
inline constexpr double kDotSize = 14;
/// From the row's leading edge to the dot, and from there to the text.
inline constexpr double kDotInset = 14;
inline constexpr double kTextGap = 10;
/// From the edit field and the rename button to the row's trailing edge.
inline constexpr double kTrailingInset = 10;
/// Between the label and the rename button, at least.
inline constexpr double kLabelGap = 8;
inline constexpr double kEditFieldHeight = 20;
/// Of the rename button, a square, and of the symbol in it.
inline constexpr double kRenameButtonSize = 22;
inline constexpr double kRenameSymbolSize = 16;
/// How often an open menu looks whether the pointer is over a row, in seconds,
/// where the system does not tell.
inline constexpr double kHoverInterval = 0.05;
}  // namespace row_metrics

/// What a row shows as long as it lives.
struct SpaceRowContent {
  DotImage dot;
  /// What the dot means, for those who do not see it; may be empty.
  std::string dotDescription;
  /// Whether it is the row of the active Space, for those who do not see it.
  bool isActive = false;
  /// Of the label and the edit field.
  Font font;
  /// Tool tip and accessible name of the rename button.
  std::string renameTitle;

  bool operator==(const SpaceRowContent&) const = default;
};

/// What changes in a row.
struct SpaceRowState {
  /// Text of the label.
  std::string label;
  /// The edit field stands in place of the label.
  bool isEditing = false;
  bool showsRenameButton = false;
  /// Behind the row, with rounded corners; nothing for none.
  std::optional<Color> background;

  bool operator==(const SpaceRowState&) const = default;
};

/// Keys that mean something to a row that is being edited.
enum class RowKey { Return, KeypadEnter, Escape, Other };

/// What becomes of a key press while a row is there.
enum class KeyHandling {
  /// It goes where it would have gone.
  Passed,
  /// It is done with and goes nowhere.
  Swallowed,
  /// It goes to the text of the edit field and nowhere else.
  Interpreted,
};

enum class RowPart { None, Row, EditField, RenameButton };

class SpaceRowView;

/// What a row does, as its face sees it. Owned by the view, which calls it on
/// the main thread. Points are in the row's coordinates, origin at the bottom
/// left; `bounds` is the row's present size.
class SpaceRowHandler {
 public:
  virtual ~SpaceRowHandler() = default;

  /// Called once, by SpaceRowView::create(), before anything else; the view
  /// lives longer than the handler.
  virtual void attach(SpaceRowView& view) = 0;

  /// The pointer is over the row, or is not; told at every change, may be told
  /// more often.
  virtual void setHovered(bool isHovered) = 0;
  /// The menu's keyboard selection is on the row, or is not.
  virtual void setHighlighted(bool isHighlighted) = 0;
  /// The menu that shows the row opened, or closed.
  virtual void setShown(bool isShown) = 0;

  /// Which part takes a click there.
  [[nodiscard]] virtual RowPart hitTest(Point point, Size bounds) const = 0;
  /// A button of the mouse that went down on the row was released there.
  virtual void mouseUp(Point point, Size bounds) = 0;
  /// The row was chosen with the keyboard or by an assistive program.
  virtual void activate() = 0;

  virtual void renameClicked() = 0;
  /// Any key pressed while the menu is open and the edit field is in use.
  virtual KeyHandling keyDown(RowKey key) = 0;
  /// The edit field's own commands, by whatever keys they come: to insert a new
  /// line, and to cancel.
  virtual void commit() = 0;
  virtual void cancel() = 0;
};

/// Face: a desktop's row in the dropdown menu. Main thread. Owned by the menu
/// item that it was given to.
class SpaceRowView {
 public:
  static std::unique_ptr<SpaceRowView> create(SpaceRowContent content, SpaceRowState state,
                                              std::unique_ptr<SpaceRowHandler> handler);

  virtual ~SpaceRowView() = default;

  /// Shows the state in place of what was shown; equal states cost nothing.
  /// When editing begins, the field takes the keyboard, shows `label`, all of it
  /// selected, and key presses go to the handler; both end with the editing. The
  /// editing of another row of the same menu is cancelled before.
  virtual void setState(const SpaceRowState& state) = 0;
  /// The edit field's text as it stands.
  [[nodiscard]] virtual std::string editedText() const = 0;
  /// Closes the menu that shows the row.
  virtual void closeMenu() = 0;
};

}  // namespace vembrix
