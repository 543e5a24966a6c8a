#pragma once

#include <optional>
#include <string>

#include "platform/SettingsForm.h"

namespace vembrix {

/// Builds the SettingsForm of a page, row by row from the top, in the style of all pages.
class FormBuilder {
 public:
  /// The width of popups and sliders, in points.
  static constexpr double controlWidth = 220;
  /// The padding above a header, in points.
  static constexpr double headerPadding = 16;

  /// Adds a label, which ends with a colon, and a control, which takes its accessible name from it.
  /// Rows of sliders, which have no baseline, are centred.
  void row(std::string label, FormControl control, std::optional<double> width = {});
  /// Adds a control over both columns.
  void full(FormControl control, double topPadding = 0);
  /// Adds a heading.
  void header(std::string text);
  /// Adds a text in small type over both columns.
  void note(std::string text);

  [[nodiscard]] SettingsForm take();

 private:
  SettingsForm form_;
};

}  // namespace vembrix
