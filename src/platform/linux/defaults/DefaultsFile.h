#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/PropertyList.h"
#include "platform/linux/defaults/StoredFile.h"

namespace vembrix {

/// Reads one domain of settings: a property-list file with a dictionary at its top. Each call sees
/// the file's present contents, or keeps the former ones while another program is writing the file
/// or it cannot be opened. Reading an unchanged file costs one system call and no memory. Logs
/// failures, where asked to, once per state of the file.
class DefaultsFile {
 public:
  enum class Log { Failures, Nothing };

  DefaultsFile(std::filesystem::path path, Log log);

  /// Returns the dictionary, valid until the next call; null if there is none.
  const PropertyList::Dictionary* contents();

  /// Returns the value under the key; null if there is none.
  PropertyList object(std::string_view key);

  /// Returns whether the values of the last call are the file's own: false when it was out of
  /// reach, damaged or being written.
  bool isCertain() const;

  /// Checks the file for changes only once, at the next reading, until letGo() was called as often.
  void hold();
  void letGo() { holds_ -= 1; }
  /// Makes the next reading check the file in spite of hold().
  void lookAgain() { isLookedAt_ = false; }

 private:
  /// Reads the file again unless it is held or certainly unchanged.
  void refresh();
  void load();
  void take(StoredSettings found, DefaultsFile::Log log);
  void report(std::string_view problem) const;

  std::filesystem::path path_;
  Log log_;

  // The file's state when it was last read; at first one that no file has.
  FileState state_{.error = -1};
  /// The errno value of the last reading; 0 for success.
  int readError_ = -1;
  StoredSettings::Condition condition_ = StoredSettings::Condition::Unfinished;
  std::string bytes_;
  std::optional<PropertyList::Dictionary> contents_;
  /// Whether any later change would show in the state.
  bool settled_ = false;
  /// Whether the file has been read at all.
  bool hasBeenRead_ = false;
  int holds_ = 0;
  /// Whether the file has been checked since hold().
  bool isLookedAt_ = false;

  /// Memory that later readings reuse.
  std::string scratch_;
};

}  // namespace vembrix
