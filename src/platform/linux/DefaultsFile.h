#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/PropertyList.h"
#include "platform/linux/StoredFile.h"

namespace vembrix {

/// One domain of settings, read: a property-list file with a dictionary at its top.
/// Each call sees what the file holds now. Reading an unchanged file costs one system
/// call and no memory. While another program is writing the file, or it cannot be
/// opened, what was read before stands. Failures are logged, once per state of the
/// file, where the log is wanted.
class DefaultsFile {
 public:
  enum class Log { Failures, Nothing };

  DefaultsFile(std::filesystem::path path, Log log);

  /// The dictionary, valid until the next call; null when there is none.
  const PropertyList::Dictionary* contents();

  /// The value under the key, or null.
  PropertyList object(std::string_view key);

  /// Whether the values are those of the file, as of the last call: not when it is out
  /// of reach, damaged or being written.
  bool isCertain() const;

  /// From now on the file is looked at once, by the next reading, until as many
  /// letGo() have followed.
  void hold();
  void letGo() { holds_ -= 1; }
  /// The next reading looks at it even so.
  void lookAgain() { isLookedAt_ = false; }

 private:
  /// Reads the file again unless it is held, or certain to be as it was.
  void refresh();
  void load();
  void take(StoredSettings found, DefaultsFile::Log log);
  void report(std::string_view problem) const;

  std::filesystem::path path_;
  Log log_;

  // The file as it was when last read, at first as it never is.
  FileState state_{.error = -1};
  /// What kept it from being read; 0 for nothing.
  int readError_ = -1;
  StoredSettings::Condition condition_ = StoredSettings::Condition::Unfinished;
  std::string bytes_;
  std::optional<PropertyList::Dictionary> contents_;
  /// Whether any later change would show in the state.
  bool settled_ = false;
  /// Whether there has been anything to go by.
  bool hasBeenRead_ = false;
  int holds_ = 0;
  /// Whether the file has been looked at since it is held.
  bool isLookedAt_ = false;

  /// Memory for reading again.
  std::string scratch_;
};

}  // namespace vembrix
