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
/// Gaps between the page's two columns (labels at their trailing edge, controls at their leading
/// edge) and between its rows.
inline constexpr double kColumnSpacing = 12;
inline constexpr double kRowSpacing = 12;
/// The margin on all four sides of the grid, inside the scrolling area.
inline constexpr double kMargin = 20;
inline constexpr Size kWellSize{44, 24};
/// Gaps between the colour grid's four columns (name, well, name, well) and between its rows.
inline constexpr double kWellColumnSpacing = 12;
inline constexpr double kWellRowSpacing = 12;
/// Extra gap before the third column.
inline constexpr double kSecondPairPadding = 28;
/// Desktops in a row of the colour grid.
inline constexpr int kPairsPerRow = 2;
/// The compression resistance of a text that wraps or truncates: weaker than the window's hold on
/// its size.
inline constexpr double kWeakCompressionResistance = 250;
}  // namespace form_metrics

/// Identifies a control that the program changes while it is shown; unique within a
/// SettingsContent.
using ControlID = std::string;

struct TextStyle {
  Font font;
  Color color = Color(SystemColor::Label);

  bool operator==(const TextStyle&) const = default;
};

/// Reports every change while the knob is dragged. A value outside the range is clamped.
struct Slider {
  double minimum = 0;
  double maximum = 1;
  double value = 0;
  std::function<void(double value)> onChange;
  std::string accessibleName;
};

struct Checkbox {
  std::string title;
  bool isOn = false;
  std::function<void(bool isOn)> onChange;
  TextStyle style;
};

/// A pop-up button (not a pull-down one).
struct Popup {
  std::vector<std::string> items;
  /// Index of the item shown; empty for none.
  std::optional<int> selected;
  /// Called when the user has chosen an item, the one shown before included.
  std::function<void(int index, const std::string& title)> onSelect;
  TextStyle style;
  std::string accessibleName;
};

/// A text that wraps at the page's width.
struct WrappingLabel {
  std::string text;
  TextStyle style;
  double compressionResistance = form_metrics::kWeakCompressionResistance;
};

/// The heading of a group of rows, on one line.
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
  /// Called on every change with the well's index and its new colour: in sRGB components, or by
  /// name where it cannot be expressed in them.
  std::function<void(int index, const Color& color)> onChange;
  TextStyle nameStyle;
  /// Returns the colours to be offered first where the user chooses one, with a name for each.
  /// Called whenever a choice begins.
  std::function<std::vector<Well>()> swatches = {};
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
  /// Empty for a button that the program never changes.
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

/// One line that the program changes while it is shown. Changes are announced to assistive
/// programs. An empty line keeps its height.
struct StatusLabel {
  std::string text;
  TextStyle style;
  ControlID id;
};

using FormControl = std::variant<Slider, Checkbox, Popup, WrappingLabel, Header, ColorGrid,
                                 PushButton, SelectableText, CommandField, StatusLabel>;

/// Returns whether the control is as wide as its row allows; others are as wide as they need, up to
/// that, and stand at the leading edge.
inline bool fillsRow(const FormControl& control) {
  return std::holds_alternative<WrappingLabel>(control) ||
         std::holds_alternative<CommandField>(control);
}

/// The vertical alignment of the cells in a row.
enum class RowAlignment { FirstBaseline, Centered };

/// A label and a control, one in each column.
struct ControlRow {
  std::string label;
  TextStyle labelStyle;
  FormControl control;
  /// In points; empty for the width that the control takes by itself.
  std::optional<double> controlWidth;
  RowAlignment alignment = RowAlignment::FirstBaseline;
};

/// A control over both columns, at the leading edge.
struct FullRow {
  FormControl control;
  /// Extra gap above the row, in points.
  double topPadding = 0;
};

using FormRow = std::variant<ControlRow, FullRow>;

/// A page. Fills the available width, starts at the top, and scrolls vertically where it is too
/// high, with a scroller that hides itself, without background and border.
struct SettingsForm {
  /// From the top, which is also the order of the Tab key.
  std::vector<FormRow> rows;
};

}  // namespace vembrix
