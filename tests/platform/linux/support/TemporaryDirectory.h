#pragma once

#include <filesystem>
#include <string_view>

namespace vembrix {

/// A private directory, removed with its contents at the end.
class TemporaryDirectory {
 public:
  TemporaryDirectory();
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  /// Creates a file in it and returns its path.
  [[nodiscard]] std::filesystem::path write(std::string_view name, std::string_view text) const;

 private:
  std::filesystem::path path_;
};

}  // namespace vembrix
