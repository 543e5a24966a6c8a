#pragma once

#include <string_view>

namespace vembrix {

/// What the user copies and pastes between programs. Main thread. Never fails
/// towards the caller.
class Pasteboard {
 public:
  /// The general one (the clipboard).
  static Pasteboard& general();

  virtual ~Pasteboard() = default;

  /// Takes away what is there, in all its representations.
  virtual void clearContents() = 0;

  /// Puts the text (UTF-8) there as plain text, beside what is there in other
  /// representations.
  virtual void setString(std::string_view text) = 0;
};

}  // namespace vembrix
