#pragma once

#include <map>
#include <string>

#include "platform/Pasteboard.h"

namespace vembrix {

/// A pasteboard in memory, by representation.
class EmbeddedPasteboard : public Pasteboard {
 public:
  static constexpr std::string_view kPlainText = "public.utf8-plain-text";

  /// The pasteboard behind Pasteboard::general().
  static EmbeddedPasteboard& shared();

  bool setString(std::string_view text) override {
    if (isTaken_) return false;
    contents_.clear();
    put(kPlainText, text);
    return true;
  }

  /// Makes later writes fail, as when another program holds the pasteboard.
  void take() { isTaken_ = true; }

  /// Puts a value there for another program.
  void put(std::string_view type, std::string_view value) {
    contents_.insert_or_assign(std::string(type), std::string(value));
  }

  /// The contents by type.
  const std::map<std::string, std::string, std::less<>>& contents() const { return contents_; }
  /// The plain text; empty if there is none.
  std::string text() const {
    const auto found = contents_.find(kPlainText);
    return found == contents_.end() ? std::string() : found->second;
  }

 private:
  std::map<std::string, std::string, std::less<>> contents_;
  bool isTaken_ = false;
};

}  // namespace vembrix
