#pragma once

#include <chrono>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace vembrix {

/// Replaces a file as a whole: a reader sees either the former contents or the new ones, also after
/// this process or the machine has died. Does not wait until the rename is on the disk, so that
/// after a crash of the machine the file may have its former contents.
///
/// The new contents are written to a temporary file beside it, always of the same name. The process
/// that holds the lock on that file is the only writer, so the file can be read, changed and
/// written during this object's life without losing another process's change. The next writer takes
/// over the temporary file of a killed one.
class FileReplacement {
 public:
  /// Returns the temporary file's path.
  static std::filesystem::path temporaryOf(const std::filesystem::path& file);

  /// Waits at most `patience` for another writer.
  FileReplacement(std::filesystem::path file, std::chrono::milliseconds patience);
  /// Leaves the file unchanged unless commit() has succeeded.
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  /// The reason why writing is impossible; std::errc::timed_out when another writer takes too long.
  [[nodiscard]] std::error_code error() const { return error_; }

  /// Writes the new contents to the temporary file, readable for the user alone; replaces those of
  /// an earlier call.
  std::error_code write(std::string_view bytes);

  /// Waits until the written contents are on the disk. Any thread, also during write().
  std::error_code sync() const;

  /// Replaces the file with the written contents. To be called at most once, after sync(), so that
  /// the name never leads to missing contents. On an error the file is unchanged.
  std::error_code commit();

 private:
  enum class Attempt { Locked, Busy, Overtaken, Failed };

  Attempt tryLock();
  /// Returns whether the open temporary file still has its name: the last writer may have renamed
  /// it to the file itself before it released the lock.
  Attempt checkName();
  void close();

  std::filesystem::path file_;
  std::filesystem::path temporary_;
  int descriptor_ = -1;
  std::error_code error_;
};

}  // namespace vembrix
