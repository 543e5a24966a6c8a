#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/PropertyList.h"

struct stat;

namespace vembrix {

/// Distinguishes states of a file without reading its contents. Times are in nanoseconds.
struct FileState {
  /// The errno value if there is no such file; else 0.
  int error = 0;
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t size = 0;
  std::int64_t modified = 0;
  std::int64_t changed = 0;
  bool operator==(const FileState&) const = default;

  static FileState of(const std::filesystem::path& path);
  static FileState of(const struct stat& status);
};

/// Returns the present time, in nanoseconds since 1970 as in FileState.
std::int64_t fileClock();

/// Reads a whole file of settings into `bytes` and its state into `state`. Returns an errno value,
/// or 0. Does not wait for writers.
int readStoredFile(const std::filesystem::path& path, FileState& state, std::string& bytes);

/// The contents of a file of settings and their condition. Any thread.
struct StoredSettings {
  enum class Condition {
    Missing,
    Whole,
    /// Incomplete, but changed within the last second: its writer may not have finished.
    Unfinished,
    /// Not a dictionary, and not being written.
    Damaged,
    /// Unreadable, but possibly whole, and so not to be replaced.
    OutOfReach
  };
  Condition condition = Condition::Missing;
  /// Empty unless the file is whole.
  PropertyList::Dictionary values;
  /// The problem, for the log.
  std::string problem;

  static StoredSettings ofError(int error);
  static StoredSettings ofBytes(std::string_view bytes, const FileState& state);
};

/// A file of settings at one moment.
struct StoredFile {
  explicit StoredFile(const std::filesystem::path& path);

  FileState state;
  std::string bytes;
  StoredSettings settings;
};

/// Returns the path with all links resolved, also where the target does not exist yet.
std::filesystem::path followLinks(std::filesystem::path path);

/// Creates the missing directories of a path, for the user alone. Reports no error: the creation of
/// a file in it will.
void makeDirectories(const std::filesystem::path& directory);

/// Renames a file that is in the way of a new one.
std::error_code keepAside(const std::filesystem::path& file);

}  // namespace vembrix
