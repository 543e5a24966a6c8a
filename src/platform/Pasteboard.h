#pragma once

#include <string_view>

namespace vembrix {

/// What the user copies and pastes between programs. Main thread.
class Pasteboard {
 public:
  /// The general one (the clipboard).
  static Pasteboard& general();

  virtual ~Pasteboard() = default;

  /// Replaces the contents, in every representation, with the text (UTF-8). Returns whether that
  /// succeeded.
  [[nodiscard]] virtual bool setString(std::string_view text) = 0;
};

}  // namespace vembrix
