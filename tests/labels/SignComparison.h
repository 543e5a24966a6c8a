#pragma once

#include <string>
#include <string_view>

#include "labels/LabelWindows.h"
#include "labels/SignModel.h"
#include "platform/embedded/faces/RecordingSignWindow.h"

namespace vembrix {

/// Compares the present labels on the embedded desktop with those of the model: their number, looks
/// and fades, the tour's overlay, and the stored recency.
class SignComparison {
 public:
  /// Compares; writes sideBySide() only if `isWritten`, to keep comparisons cheap.
  SignComparison(const SignModel& model, const LabelWindows& windows, bool isWritten);

  [[nodiscard]] bool isSame() const { return isSame_; }
  /// One line per compared value, the model's first; "!!" marks differences.
  [[nodiscard]] const std::string& sideBySide() const { return text_; }

 private:
  template <typename T>
  void line(std::string_view what, const T& model, const T& product, bool isSame);

  void compareLabels(const SignModel& model, const LabelWindows& windows);
  void compareLabel(const SignModel::Label& label, const RecordingSignWindow& window);
  void compareOverlays(const SignModel& model);
  void compareRecency(const SignModel& model);

  bool isWritten_;
  bool isSame_ = true;
  std::string text_;
};

}  // namespace vembrix
