#pragma once

#include "platform/Geometry.h"

namespace vembrix {

/// The sizes of a row and its parts, in points; the same on every system.
namespace row_metrics {
inline constexpr Size kSize{220, 24};
/// The corner radius of the tint behind a row.
inline constexpr double kCornerRadius = 4;
/// Width and height of the dot.
inline constexpr double kDotSize = 14;
/// Width and height of the symbol in the rename button.
inline constexpr double kRenameSymbolSize = 16;
}  // namespace row_metrics

/// The frames of a row's parts in points, origin at the row's bottom left.
struct SpaceRowLayout {
  Rect dot;
  /// As high as the row; the text is centred in it vertically, and truncated at its trailing edge.
  Rect label;
  Rect editField;
  Rect renameButton;

  bool operator==(const SpaceRowLayout&) const = default;
};

/// Returns the frames of the parts of a row of that size. The dot and all leading edges keep their
/// distance from the row's leading edge, the other edges theirs from the trailing one, and the
/// parts stay centred vertically.
SpaceRowLayout layOutRow(Size bounds);

}  // namespace vembrix
