#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/PropertyList.h"

struct stat;

namespace vembrix {

/// One domain of settings: a property-list file with a dictionary at its top.
/// Nothing is kept that the file does not hold: each call sees what is stored
/// now. Reading an unchanged file costs one system call and no memory. Failures
/// are logged, once per state of the file, where the log is wanted.
class DefaultsFile {
 public:
  enum class Log { Failures, Nothing };

  DefaultsFile(std::filesystem::path path, Log log);

  /// The dictionary, valid until the next call; null when the file is missing or
  /// cannot be read.
  const PropertyList::Dictionary* contents();

  /// The value under the key, or null.
  PropertyList object(std::string_view key);

  /// From now on the file is looked at once, by the next reading, until as many
  /// letGo() have followed.
  void hold();
  void letGo() { holds_ -= 1; }

  /// Stores the value, or removes the key for null; leaves the file alone when
  /// it holds that already. All else in the file stays as it is, whoever wrote
  /// it. A file that is no property list is kept beside under another name.
  void set(std::string_view key, const PropertyList& value);

 private:
  enum class Outcome {
    Missing,
    Read,
    Damaged,  ///< Not a dictionary that can be read, and it will not become one.
    Failed    ///< May be readable at another time.
  };

  /// Tells one state of the file from another, as far as can be seen without
  /// reading it. Times are in nanoseconds.
  struct State {
    int error = 0;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modified = 0;
    std::int64_t changed = 0;
    bool operator==(const State&) const = default;

    static State of(const std::filesystem::path& path);
    static State of(const struct stat& status);
  };

  /// Reads the file again unless it is held, or certain to be as it was.
  void refresh();
  void load(State state);
  /// Reads the whole file into `scratch_`; `state` becomes that of what is read.
  /// What kept it from being read, or nothing.
  int read(State& state);
  void interpret();
  void fail(int error, Log log);
  bool holds(std::string_view key, const PropertyList& value) const;
  std::error_code store(std::string_view key, const PropertyList& value);
  void report(std::string_view failure, std::string_view reason) const;

  std::filesystem::path path_;
  Log log_;

  // The file as it was when last read, at first as it never is.
  State state_{.error = -1};
  /// What kept it from being read; 0 for nothing.
  int readError_ = -1;
  Outcome outcome_ = Outcome::Missing;
  std::string bytes_;
  std::optional<PropertyList::Dictionary> contents_;
  /// Whether any later change would show in the state.
  bool settled_ = false;
  int holds_ = 0;
  /// Whether the file has been looked at since it is held.
  bool isLookedAt_ = false;

  /// Memory for reading again.
  std::string scratch_;
  std::error_code writeError_;
};

}  // namespace vembrix
