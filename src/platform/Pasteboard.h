#pragma once

#include <string_view>

namespace vembrix {

/// What the user copies and pastes between programs. Main thread.
class Pasteboard {
 public:
  /// The general one (the clipboard).
  static Pasteboard& general();

  virtual ~Pasteboard() = default;

  /// Puts the text (UTF-8) there as plain text, in the place of all that is there in any
  /// representation. Whether it is there now.
  [[nodiscard]] virtual bool setString(std::string_view text) = 0;
};

}  // namespace vembrix
