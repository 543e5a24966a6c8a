#pragma once

#include <string>
#include <string_view>

#include "labels/LabelWindows.h"
#include "labels/SignModel.h"
#include "platform/embedded/RecordingSignWindow.h"

namespace vembrix {

/// The labels on the embedded desktop beside those of the model, at this moment: which there
/// are, how each looks and where its fade leads, the tour's overlay, and the stored recency.
class SignComparison {
 public:
  /// Compares. Only a side-by-side that is asked for is written, so that looking costs little.
  SignComparison(const SignModel& model, const LabelWindows& windows, bool isWritten);

  [[nodiscard]] bool isSame() const { return isSame_; }
  /// A line for everything that was compared, model first; "!!" marks what differs.
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
