#include "platform/SpaceRowLayout.h"

namespace vembrix {
namespace {

/// The distances from the row's leading edge to the dot, and from the dot to the text.
constexpr double kDotInset = 14;
constexpr double kTextGap = 10;
/// The distances from the edit field and the rename button to the row's trailing edge.
constexpr double kTrailingInset = 10;
/// The least distance between the label and the rename button.
constexpr double kLabelGap = 8;
constexpr double kEditFieldHeight = 20;
constexpr double kRenameButtonSize = 22;

}  // namespace

SpaceRowLayout layOutRow(Size bounds) {
  constexpr double kTextLeading = kDotInset + row_metrics::kDotSize + kTextGap;
  const double trailing = bounds.width - kTrailingInset;
  const double buttonLeading = trailing - kRenameButtonSize;
  const auto centred = [&bounds](double x, double width, double height) {
    return Rect{x, (bounds.height - height) / 2, width, height};
  };
  return {
      .dot = centred(kDotInset, row_metrics::kDotSize, row_metrics::kDotSize),
      .label = centred(kTextLeading, buttonLeading - kLabelGap - kTextLeading, bounds.height),
      .editField = centred(kTextLeading, trailing - kTextLeading, kEditFieldHeight),
      .renameButton = centred(buttonLeading, kRenameButtonSize, kRenameButtonSize),
  };
}

}  // namespace vembrix
