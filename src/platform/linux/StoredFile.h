#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/PropertyList.h"

struct stat;

namespace vembrix {

/// Tells one state of a file from another, as far as can be seen without reading it.
/// Times are in nanoseconds.
struct FileState {
  /// An errno value, when there is no such file.
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

/// Nanoseconds since 1970, as the times of files.
std::int64_t fileClock();

/// Reads a whole file of settings into `bytes`; `state` becomes that of what is read.
/// What kept it from being read, an errno value, or 0. Waits for nobody.
int readStoredFile(const std::filesystem::path& path, FileState& state, std::string& bytes);

/// What a file of settings is good for. Any thread.
struct StoredSettings {
  enum class Condition {
    Missing,
    Whole,
    /// Not whole, but changed within the last second: who writes it may be at it.
    Unfinished,
    /// No dictionary, and it will not become one by itself.
    Damaged,
    /// Not for us to read, or to replace: it may be whole.
    OutOfReach
  };
  Condition condition = Condition::Missing;
  /// Empty unless the file is whole.
  PropertyList::Dictionary values;
  /// What is wrong with it, for the log.
  std::string problem;

  static StoredSettings ofError(int error);
  static StoredSettings ofBytes(std::string_view bytes, const FileState& state);
};

/// A file of settings as it is at the moment.
struct StoredFile {
  explicit StoredFile(const std::filesystem::path& path);

  FileState state;
  std::string bytes;
  StoredSettings settings;
};

/// What a path leads to in the end, also where that does not exist yet.
std::filesystem::path followLinks(std::filesystem::path path);

/// Makes what is missing of a directory's path, for the user alone. Whether it
/// worked shows when a file is made in it.
void makeDirectories(const std::filesystem::path& directory);

/// Gives what is in the way of a new file a name of its own.
std::error_code keepAside(const std::filesystem::path& file);

}  // namespace vembrix
