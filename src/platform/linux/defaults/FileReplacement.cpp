#include "platform/linux/defaults/FileReplacement.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <thread>
#include <utility>

namespace vembrix {
namespace {

constexpr mode_t kUserOnly = S_IRUSR | S_IWUSR;

std::error_code lastError() {
  return {errno, std::generic_category()};
}

}  // namespace

std::filesystem::path FileReplacement::temporaryOf(const std::filesystem::path& file) {
  return file.parent_path() / std::string(".").append(file.filename()).append(".tmp");
}

FileReplacement::FileReplacement(std::filesystem::path file, std::chrono::milliseconds patience)
    : file_(std::move(file)), temporary_(temporaryOf(file_)) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (true) {
    switch (tryLock()) {
      case Attempt::Locked:
        return;
      case Attempt::Failed:
        error_ = lastError();
        close();
        return;
      case Attempt::Overtaken:
        close();
        break;
      case Attempt::Busy:
        close();
        if (std::chrono::steady_clock::now() >= deadline) {
          error_ = std::make_error_code(std::errc::timed_out);
          return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        break;
    }
  }
}

FileReplacement::~FileReplacement() {
  if (descriptor_ < 0) return;
  // Still locked, so no other process uses it.
  ::unlink(temporary_.c_str());
  close();
}

FileReplacement::Attempt FileReplacement::tryLock() {
  // Opened without blocking, in case it is not a regular file.
  constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  descriptor_ = ::open(temporary_.c_str(), kFlags, kUserOnly);
  if (descriptor_ < 0) return Attempt::Failed;
  while (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return Attempt::Busy;
    // The file system has no locks: writes without one.
    if (errno != EINTR) break;
  }
  return checkName();
}

FileReplacement::Attempt FileReplacement::checkName() {
  struct stat opened {};
  struct stat named {};
  if (::fstat(descriptor_, &opened) != 0) return Attempt::Failed;
  if (::lstat(temporary_.c_str(), &named) != 0) {
    return errno == ENOENT ? Attempt::Overtaken : Attempt::Failed;
  }
  if (opened.st_dev != named.st_dev || opened.st_ino != named.st_ino) return Attempt::Overtaken;
  if (!S_ISREG(opened.st_mode)) {
    errno = EEXIST;
    return Attempt::Failed;
  }
  // A file with a second name belongs to another program and must not be written to.
  if (opened.st_nlink > 1) {
    return ::unlink(temporary_.c_str()) == 0 ? Attempt::Overtaken : Attempt::Failed;
  }
  return Attempt::Locked;
}

std::error_code FileReplacement::write(std::string_view bytes) {
  const bool isEmpty = ::ftruncate(descriptor_, 0) == 0 && ::lseek(descriptor_, 0, SEEK_SET) == 0;
  if (!isEmpty || ::fchmod(descriptor_, kUserOnly) != 0) return lastError();
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return lastError();
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

std::error_code FileReplacement::sync() const {
  return ::fsync(descriptor_) == 0 ? std::error_code() : lastError();
}

std::error_code FileReplacement::commit() {
  if (::rename(temporary_.c_str(), file_.c_str()) != 0) return lastError();
  close();
  return {};
}

void FileReplacement::close() {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
}

}  // namespace vembrix
