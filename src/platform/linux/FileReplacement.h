#pragma once

#include <chrono>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace vembrix {

/// Replaces a file as a whole: a reader sees the former contents or the new
/// ones, also when this process or the machine dies on the way. Which of the two, the
/// machine's death decides: that the new name is on the disk is not waited for.
///
/// The new contents grow in one temporary file beside it, always of the same
/// name. Whoever holds the lock on that one is the only writer, so between the
/// making of this object and its end the file can be read, changed and written
/// without losing another process's change. A temporary that a killed writer
/// left behind is taken over by the next.
class FileReplacement {
 public:
  /// Where the new contents of the file grow.
  static std::filesystem::path temporaryOf(const std::filesystem::path& file);

  /// Waits at most that long for another writer.
  FileReplacement(std::filesystem::path file, std::chrono::milliseconds patience);
  /// Without a commit, everything is as before.
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  /// Why nothing can be written; std::errc::timed_out when another writer is at
  /// it for too long.
  [[nodiscard]] std::error_code error() const { return error_; }

  /// Makes the bytes the new contents, readable for the user alone; in the place of
  /// those of an earlier call. The file is as before.
  std::error_code write(std::string_view bytes);

  /// Returns when what was written is on the disk. Any thread, also during write().
  std::error_code sync() const;

  /// Puts what was written in the place of the file. At most once, after sync(): a name
  /// must never lead to contents that are not there. On an error the file is untouched.
  std::error_code commit();

 private:
  enum class Attempt { Locked, Busy, Overtaken, Failed };

  Attempt tryLock();
  /// Whether the temporary that is open is still the one of that name: the last
  /// writer may have made it the file itself before it let go of the lock.
  Attempt checkName();
  void close();

  std::filesystem::path file_;
  std::filesystem::path temporary_;
  int descriptor_ = -1;
  std::error_code error_;
};

}  // namespace vembrix
