#include "platform/linux/defaults/StoredFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <system_error>
#include <variant>

#include "platform/linux/defaults/XmlPropertyList.h"
#include "platform/linux/support/Descriptor.h"

namespace vembrix {
namespace {

using Condition = StoredSettings::Condition;

std::int64_t nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec;
}

/// Returns whether a program is writing the file: those that write in place empty it first.
bool isBeingWritten(const FileState& state) {
  constexpr std::chrono::nanoseconds kLongestWriting = std::chrono::seconds(1);
  return std::abs(fileClock() - state.modified) < kLongestWriting.count();
}

}  // namespace

FileState FileState::of(const std::filesystem::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? of(status) : FileState{.error = errno};
}

FileState FileState::of(const struct stat& status) {
  return {0,
          status.st_dev,
          status.st_ino,
          status.st_size,
          nanoseconds(status.st_mtim),
          nanoseconds(status.st_ctim)};
}

std::int64_t fileClock() {
  return std::chrono::nanoseconds(std::chrono::system_clock::now().time_since_epoch()).count();
}

int readStoredFile(const std::filesystem::path& path, FileState& state, std::string& bytes) {
  // Opened without blocking, in case it is not a regular file.
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status {};
  if (file.number() < 0 || ::fstat(file.number(), &status) != 0) return errno;
  state = FileState::of(status);
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (!S_ISREG(status.st_mode)) return ENXIO;
  if (state.size > static_cast<std::int64_t>(kPropertyListLimit)) return EFBIG;
  // Reads one byte more than the size, which shows the end without another call.
  bytes.resize(static_cast<std::size_t>(state.size) + 1);
  std::size_t size = 0;
  while (size < bytes.size()) {
    const ssize_t count = ::read(file.number(), bytes.data() + size, bytes.size() - size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    if (count == 0) break;
    size += static_cast<std::size_t>(count);
  }
  bytes.resize(size);
  return 0;
}

StoredSettings StoredSettings::ofError(int error) {
  const std::string problem = std::generic_category().message(error);
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return {Condition::Missing, {}, problem};
    case EFBIG:
    case EISDIR:
    case ELOOP:
    case ENXIO:
      return {Condition::Damaged, {}, problem};
    default:
      return {Condition::OutOfReach, {}, problem};
  }
}

StoredSettings StoredSettings::ofBytes(std::string_view bytes, const FileState& state) {
  const auto read = readPropertyList(bytes);
  if (const auto* value = std::get_if<PropertyList>(&read)) {
    const PropertyList::Dictionary* values = value->asDictionary();
    if (values) return {Condition::Whole, *values, {}};
    return {Condition::Damaged, {}, "no dictionary at its top"};
  }
  if (std::get<PropertyListFault>(read) == PropertyListFault::Binary) {
    return {Condition::OutOfReach,
            {},
            "it is a binary property list; \"plutil -convert xml1\" makes it one that can be read"};
  }
  const bool isUnfinished = isBeingWritten(state);
  return {isUnfinished ? Condition::Unfinished : Condition::Damaged, {}, "no property list"};
}

StoredFile::StoredFile(const std::filesystem::path& path) : state(FileState::of(path)) {
  const int error = state.error != 0 ? state.error : readStoredFile(path, state, bytes);
  settings = error != 0 ? StoredSettings::ofError(error) : StoredSettings::ofBytes(bytes, state);
}

std::filesystem::path followLinks(std::filesystem::path path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(path, error); ++i) {
    const std::filesystem::path target = std::filesystem::read_symlink(path, error);
    if (error) break;
    // An absolute target replaces the whole path.
    path = path.parent_path() / target;
  }
  return path;
}

void makeDirectories(const std::filesystem::path& directory) {
  if (directory.empty() || ::mkdir(directory.c_str(), S_IRWXU) == 0 || errno != ENOENT) return;
  if (directory.parent_path() == directory) return;
  makeDirectories(directory.parent_path());
  ::mkdir(directory.c_str(), S_IRWXU);
}

std::error_code keepAside(const std::filesystem::path& file) {
  constexpr int kMostNames = 10000;
  for (int i = 1; i < kMostNames; ++i) {
    std::filesystem::path name = file;
    name += i == 1 ? ".damaged" : ".damaged." + std::to_string(i);
    struct stat status {};
    if (::lstat(name.c_str(), &status) == 0) continue;
    const bool isAside = errno == ENOENT && ::rename(file.c_str(), name.c_str()) == 0;
    // A file that has disappeared meanwhile counts as success.
    return isAside || errno == ENOENT ? std::error_code()
                                      : std::error_code(errno, std::generic_category());
  }
  return std::make_error_code(std::errc::file_exists);
}

}  // namespace vembrix
