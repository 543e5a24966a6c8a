#pragma once

#include <filesystem>
#include <string_view>

namespace vembrix {

/// A directory for this process alone, removed with all in it at the end.
class TemporaryDirectory {
 public:
  TemporaryDirectory();
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  /// Makes a file in it; its path.
  [[nodiscard]] std::filesystem::path write(std::string_view name, std::string_view text) const;

 private:
  std::filesystem::path path_;
};

}  // namespace vembrix
