#pragma once

#include <filesystem>
#include <string_view>

#include "platform/PropertyList.h"
#include "platform/linux/defaults/DefaultsFile.h"
#include "platform/linux/defaults/DefaultsWriter.h"

namespace vembrix {

/// Reads and writes the application's own domain. A new value takes effect at once and reaches the
/// file within half a second. Another program's write is seen by the next read and wins over
/// earlier ones of this process. To be used by one thread.
class DefaultsStore {
 public:
  explicit DefaultsStore(std::filesystem::path path);

  /// Returns the value under the key; null if there is none. Reading an unchanged value costs one
  /// system call and no memory.
  PropertyList object(std::string_view key);

  /// Stores the value, or removes the key for null; does nothing if that is already the case. The
  /// rest of the file stays as it is. A value that cannot be written, or would be too large to
  /// read, is logged and dropped. A damaged file is kept under another name.
  void set(std::string_view key, const PropertyList& value);

  /// As in DefaultsFile.
  void hold() { file_.hold(); }
  void letGo() { file_.letGo(); }

  /// As in DefaultsWriter.
  void finish() { writer_.finish(); }

 private:
  /// Returns whether there is no need to write the value.
  bool holds(std::string_view key, const PropertyList& value);
  /// Returns the file's value, this process's last write included.
  PropertyList stored(std::string_view key);

  std::filesystem::path path_;
  DefaultsFile file_;
  DefaultsWriter writer_;
  /// The writer's writeCount() when the file was last checked.
  int seenWrites_ = 0;
};

}  // namespace vembrix
