#pragma once

#include <filesystem>
#include <string_view>

#include "platform/PropertyList.h"
#include "platform/linux/DefaultsFile.h"
#include "platform/linux/DefaultsWriter.h"

namespace vembrix {

/// The application's own domain, read and written. What is set counts at once; the file
/// follows within half a second. Another program's write is seen by the next read, and
/// wins over ours of before. To be used by one thread.
class DefaultsStore {
 public:
  explicit DefaultsStore(std::filesystem::path path);

  /// The value under the key, or null. Asking for what has not changed costs one system
  /// call and no memory.
  PropertyList object(std::string_view key);

  /// Stores the value, or removes the key for null; nothing happens where that is so
  /// already. All else in the file stays as it is, whoever wrote it. A value that has no
  /// form, or is larger than what is read, is logged and lost. A damaged file is kept
  /// beside under another name.
  void set(std::string_view key, const PropertyList& value);

  /// As those of DefaultsFile.
  void hold() { file_.hold(); }
  void letGo() { file_.letGo(); }

  /// As that of DefaultsWriter.
  void finish() { writer_.finish(); }

 private:
  /// What the file holds, also after our own last write.
  PropertyList stored(std::string_view key);

  std::filesystem::path path_;
  DefaultsFile file_;
  DefaultsWriter writer_;
  /// Of the writer, at the last look at the file.
  int seenWrites_ = 0;
};

}  // namespace vembrix
