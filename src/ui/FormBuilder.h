#pragma once

#include <optional>
#include <string>

#include "platform/SettingsForm.h"

namespace vembrix {

/// Puts the rows of a page together, from the top, as all pages have them.
class FormBuilder {
 public:
  /// The width of popups and sliders, in points.
  static constexpr double controlWidth = 220;
  /// Over a header, in points.
  static constexpr double headerPadding = 16;

  /// A label, which ends with a colon, and a control, which goes by the same
  /// name. Sliders have no baseline: their rows are centred.
  void row(std::string label, FormControl control, std::optional<double> width = {});
  /// A control over both columns.
  void full(FormControl control, double topPadding = 0);
  /// A heading over the rows that follow.
  void header(std::string text);
  /// Small type, over both columns.
  void note(std::string text);

  [[nodiscard]] SettingsForm take();

 private:
  SettingsForm form_;
};

}  // namespace vembrix
