#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/Geometry.h"
#include "platform/SpaceRowLayout.h"

namespace vembrix {

/// A small drawing made of ovals, painted in their order.
struct DotImage {
  struct Oval {
    /// Origin at the image's bottom left.
    Rect rect;
    std::optional<Color> fill;
    /// Painted over the fill, centred on the oval's edge.
    std::optional<Color> stroke;
    /// In points; ignored without a stroke.
    double lineWidth = 0;
    bool operator==(const Oval&) const = default;
  };

  Size size;
  std::vector<Oval> ovals;

  bool operator==(const DotImage&) const = default;
};

namespace row_metrics {
/// Seconds between two checks whether the pointer is over a row of the open menu, on systems that
/// do not report it.
inline constexpr double kHoverInterval = 0.05;
}  // namespace row_metrics

/// The constant part of a row.
struct SpaceRowContent {
  DotImage dot;
  /// The dot's accessible description; may be empty.
  std::string dotDescription;
  /// Whether assistive programs present the row as that of the active Space.
  bool isActive = false;
  /// The font of the label and the edit field.
  Font font;
  /// Tool tip and accessible name of the rename button.
  std::string renameTitle;

  bool operator==(const SpaceRowContent&) const = default;
};

/// The changing part of a row.
struct SpaceRowState {
  std::string label;
  /// Whether the edit field replaces the label.
  bool isEditing = false;
  bool showsRenameButton = false;
  /// The tint behind the row, with rounded corners; empty for none.
  std::optional<Color> background;

  bool operator==(const SpaceRowState&) const = default;
};

/// Keys, as an edited row distinguishes them.
enum class RowKey { Return, KeypadEnter, Escape, Other };

/// What happens to a key press while the edit field is in use.
enum class KeyHandling {
  /// Handled as without the row.
  Passed,
  /// Consumed.
  Swallowed,
  /// Delivered to the edit field's text only.
  Interpreted,
};

enum class RowPart { None, Row, EditField, RenameButton };

class SpaceRowView;

/// Handles the user's input in a row. Owned by the view, which calls it on the main thread. Points
/// are in the row's coordinates, origin at the bottom left; `bounds` is the row's present size.
class SpaceRowHandler {
 public:
  virtual ~SpaceRowHandler() = default;

  /// Called once, by SpaceRowView::create(), before anything else; the view
  /// lives longer than the handler.
  virtual void attach(SpaceRowView& view) = 0;

  /// Reports whether the pointer is over the row: at every change, possibly more often.
  virtual void setHovered(bool isHovered) = 0;
  /// Reports whether the menu's keyboard selection is on the row.
  virtual void setHighlighted(bool isHighlighted) = 0;
  /// Reports whether the menu that shows the row is open.
  virtual void setShown(bool isShown) = 0;

  /// Returns the part that takes a click at the point.
  [[nodiscard]] virtual RowPart hitTest(Point point, Size bounds) const = 0;
  /// A mouse button pressed on the row was released at the point.
  virtual void mouseUp(Point point, Size bounds) = 0;
  /// The row was chosen with the keyboard or by an assistive program.
  virtual void activate() = 0;

  virtual void renameClicked() = 0;
  /// A key was pressed while the menu is open and the edit field is in use.
  virtual KeyHandling keyDown(RowKey key) = 0;
  /// The edit field's own commands, whatever their keys: insert a new line, and cancel.
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

  /// Shows the state; an equal state costs nothing. When editing begins, the editing of another row
  /// of the same menu is cancelled first; then the field shows `label`, fully selected, and takes
  /// the keyboard, and key presses go to the handler until editing ends.
  virtual void setState(const SpaceRowState& state) = 0;
  /// The edit field's present text.
  [[nodiscard]] virtual std::string editedText() const = 0;
  /// Closes the menu that shows the row.
  virtual void closeMenu() = 0;
};

}  // namespace vembrix
