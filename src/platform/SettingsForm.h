#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/Geometry.h"

namespace vembrix {

// A page of the settings window as a value: what stands on it, what each control
// shows, and what happens when the user changes it. Closures run on the main
// thread, only for what the user does, never for what the program sets, and may
// replace the whole page (SettingsWindow::setContent()) before they return. An
// empty closure does nothing.

/// How a page is laid out, in points; the same on every system.
namespace form_metrics {
/// Of the page's two columns (labels, at their trailing edge; controls, at
/// their leading edge) and its rows.
inline constexpr double kColumnSpacing = 12;
inline constexpr double kRowSpacing = 12;
/// Around the grid, on all four sides, inside what scrolls.
inline constexpr double kMargin = 20;
/// Of a colour well.
inline constexpr Size kWellSize{44, 24};
/// Of the colour grid's four columns (name, well, name, well), and its rows.
inline constexpr double kWellColumnSpacing = 12;
inline constexpr double kWellRowSpacing = 12;
/// Before the third column, in addition to the spacing.
inline constexpr double kSecondPairPadding = 28;
/// Desktops in a row of the colour grid.
inline constexpr int kPairsPerRow = 2;
/// How strongly a text that wraps or truncates holds on to the width of its one
/// line: less than the window to its size.
inline constexpr double kWeakCompressionResistance = 250;
}  // namespace form_metrics

/// Names a control that the program changes while it is shown. Unique in a
/// content.
using ControlID = std::string;

/// How a text looks.
struct TextStyle {
  Font font;
  Color color = Color(SystemColor::Label);

  bool operator==(const TextStyle&) const = default;
};

/// Reports every change while the knob is dragged. A value outside the range
/// shows the nearer end.
struct Slider {
  double minimum = 0;
  double maximum = 1;
  double value = 0;
  std::function<void(double value)> onChange;
  std::string accessibleName;
};

/// A box with its title.
struct Checkbox {
  std::string title;
  bool isOn = false;
  std::function<void(bool isOn)> onChange;
  TextStyle style;
};

/// A pop-up button (not a pull-down one).
struct Popup {
  std::vector<std::string> items;
  /// The place of the item shown, from 0; nothing shows none.
  std::optional<int> selected;
  /// Called when the user has chosen an item, the one shown before included.
  std::function<void(int index, const std::string& title)> onSelect;
  TextStyle style;
  std::string accessibleName;
};

/// A text of as many lines as it needs in the width that the page gives it.
struct WrappingLabel {
  std::string text;
  TextStyle style;
  double compressionResistance = form_metrics::kWeakCompressionResistance;
};

/// One line above a group of rows.
struct Header {
  std::string text;
  TextStyle style;
};

/// A grid of names and colour wells, two pairs in a row; the cells are centred
/// vertically, names at the trailing edge of their column, wells at the leading
/// one. An odd last pair leaves the row's other two cells empty; without any
/// pair the grid is empty.
struct ColorGrid {
  struct Well {
    /// Also the well's accessible name.
    std::string name;
    Color color;
    bool operator==(const Well&) const = default;
  };

  std::vector<Well> wells;
  /// The place of the well, from 0, and its new colour: of sRGB components, or
  /// by name when it cannot be expressed in them. Reports every change.
  std::function<void(int index, const Color& color)> onChange;
  TextStyle nameStyle;
};

struct PushButton {
  enum class Bezel {
    Rounded,
    /// No border: only the title, in its colour, under a pointing hand.
    Link,
  };

  std::string title;
  std::function<void()> action;
  Bezel bezel = Bezel::Rounded;
  TextStyle style;
  bool isEnabled = true;
  /// May be empty for a button that never changes.
  ControlID id;
};

/// One line that can be selected and copied, not edited.
struct SelectableText {
  std::string text;
  TextStyle style;
  std::string accessibleName;
};

/// A command to be copied: a text field with a rounded bezel as wide as the
/// page, selectable, not editable, cut off at the end with an ellipsis.
struct CommandField {
  std::string text;
  TextStyle style;
  double compressionResistance = form_metrics::kWeakCompressionResistance;
  std::string accessibleName;
};

/// One line that the program changes while it is shown; a change is told to
/// assistive programs. Takes its line's height when empty, too.
struct StatusLabel {
  std::string text;
  TextStyle style;
  ControlID id;
};

using FormControl = std::variant<Slider, Checkbox, Popup, WrappingLabel, Header, ColorGrid,
                                 PushButton, SelectableText, CommandField, StatusLabel>;

/// How the cells of a row stand to each other.
enum class RowAlignment { FirstBaseline, Centered };

/// A label and a control, one in each column.
struct ControlRow {
  std::string label;
  TextStyle labelStyle;
  FormControl control;
  /// In points; nothing for the control's own.
  std::optional<double> controlWidth;
  RowAlignment alignment = RowAlignment::FirstBaseline;
};

/// A control over both columns, at the leading edge.
struct FullRow {
  FormControl control;
  /// In addition to the row spacing, in points.
  double topPadding = 0;
};

using FormRow = std::variant<ControlRow, FullRow>;

/// A page. It fills the width that it is given, starts at the top, and scrolls
/// vertically when it is higher than what shows it: with a scroller that hides
/// itself, without ground and border.
struct SettingsForm {
  /// From the top. Also the order in which the Tab key visits the controls.
  std::vector<FormRow> rows;
};

}  // namespace vembrix
