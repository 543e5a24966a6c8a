#include "platform/linux/DefaultsFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <utility>

#include "platform/PropertyListSerialization.h"
#include "platform/SystemLog.h"
#include "platform/linux/FileReplacement.h"

namespace vembrix {
namespace {

/// Two changes within one tick of the file system's clock look the same. Ticks
/// are milliseconds mostly, two seconds at the most.
constexpr std::chrono::seconds kSettlingTime{3};
/// Settings are kilobytes.
constexpr std::int64_t kLargestFile = std::int64_t{64} << 20;
/// For another writer. The main thread waits, so not for long.
constexpr std::chrono::milliseconds kPatience{1000};

std::int64_t nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec;
}

std::int64_t now() {
  return std::chrono::nanoseconds(std::chrono::system_clock::now().time_since_epoch()).count();
}

std::string messageOf(int error) {
  return std::generic_category().message(error);
}

/// What a path leads to in the end, also where that does not exist yet.
std::filesystem::path followLinks(std::filesystem::path path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(path, error); ++i) {
    const std::filesystem::path target = std::filesystem::read_symlink(path, error);
    if (error) break;
    // An absolute target replaces all before it.
    path = path.parent_path() / target;
  }
  return path;
}

/// Makes what is missing of a directory's path, for the user alone. Whether it
/// worked shows when a file is made in it.
void makeDirectories(const std::filesystem::path& directory) {
  if (directory.empty() || ::mkdir(directory.c_str(), S_IRWXU) == 0 || errno != ENOENT) return;
  if (directory.parent_path() == directory) return;
  makeDirectories(directory.parent_path());
  ::mkdir(directory.c_str(), S_IRWXU);
}

/// Gives what is in the way of a new file a name of its own.
std::error_code keepAside(const std::filesystem::path& file) {
  constexpr int kMostNames = 10000;
  for (int i = 1; i < kMostNames; ++i) {
    std::filesystem::path name = file;
    name += i == 1 ? ".damaged" : ".damaged." + std::to_string(i);
    struct stat status {};
    if (::lstat(name.c_str(), &status) == 0) continue;
    const bool isAside = errno == ENOENT && ::rename(file.c_str(), name.c_str()) == 0;
    // Gone meanwhile is as good.
    return isAside || errno == ENOENT ? std::error_code()
                                      : std::error_code(errno, std::generic_category());
  }
  return std::make_error_code(std::errc::file_exists);
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }

 private:
  int number_;
};

}  // namespace

DefaultsFile::State DefaultsFile::State::of(const std::filesystem::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? of(status) : State{.error = errno};
}

DefaultsFile::State DefaultsFile::State::of(const struct stat& status) {
  return {0,
          status.st_dev,
          status.st_ino,
          status.st_size,
          nanoseconds(status.st_mtim),
          nanoseconds(status.st_ctim)};
}

DefaultsFile::DefaultsFile(std::filesystem::path path, Log log)
    : path_(std::move(path)), log_(log) {}

// Reading

const PropertyList::Dictionary* DefaultsFile::contents() {
  refresh();
  return contents_ ? &*contents_ : nullptr;
}

PropertyList DefaultsFile::object(std::string_view key) {
  const PropertyList::Dictionary* dictionary = contents();
  if (!dictionary) return {};
  const auto entry = dictionary->find(key);
  return entry == dictionary->end() ? PropertyList() : entry->second;
}

void DefaultsFile::hold() {
  if (holds_++ == 0) isLookedAt_ = false;
}

void DefaultsFile::refresh() {
  if (holds_ > 0 && isLookedAt_) return;
  isLookedAt_ = true;
  const State state = State::of(path_);
  if (!settled_ || state != state_) load(state);
}

void DefaultsFile::load(State state) {
  const std::int64_t start = now();
  const int error = state.error != 0 ? state.error : read(state);
  const bool isNew = state != state_ || error != readError_;
  const bool wereBytes = readError_ == 0;
  state_ = state;
  readError_ = error;
  if (error != 0) {
    fail(error, isNew ? log_ : Log::Nothing);
  } else if (!wereBytes || scratch_ != bytes_) {
    std::swap(bytes_, scratch_);
    // So that the next reading needs no memory.
    scratch_.reserve(bytes_.size() + 1);
    interpret();
  }
  // Whatever changes after the start either shows in the state or happens within
  // a tick of the change that the state shows.
  const std::int64_t age = start - state.changed;
  const bool hasAged = age > std::chrono::nanoseconds(kSettlingTime).count();
  settled_ = outcome_ != Outcome::Failed && (state.error != 0 || hasAged);
}

int DefaultsFile::read(State& state) {
  // Not blocking: whatever stands there instead of a file must not hold us up.
  const Descriptor file(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status {};
  if (file.number() < 0 || ::fstat(file.number(), &status) != 0) return errno;
  state = State::of(status);
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (!S_ISREG(status.st_mode)) return ENXIO;
  if (state.size > kLargestFile) return EFBIG;
  // One byte more, to see the end without reading once more.
  scratch_.resize(static_cast<std::size_t>(state.size) + 1);
  std::size_t size = 0;
  while (size < scratch_.size()) {
    const ssize_t count = ::read(file.number(), scratch_.data() + size, scratch_.size() - size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    if (count == 0) break;
    size += static_cast<std::size_t>(count);
  }
  scratch_.resize(size);
  return 0;
}

void DefaultsFile::interpret() {
  const std::optional<PropertyList> list = parsePropertyList(bytes_);
  const PropertyList::Dictionary* dictionary = list ? list->asDictionary() : nullptr;
  outcome_ = dictionary ? Outcome::Read : Outcome::Damaged;
  if (dictionary) {
    contents_ = *dictionary;
  } else {
    contents_.reset();
    report("cannot read", list ? "no dictionary at its top" : "no property list");
  }
}

void DefaultsFile::fail(int error, Log log) {
  contents_.reset();
  bytes_.clear();
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      outcome_ = Outcome::Missing;
      return;
    case EACCES:
    case EFBIG:
    case EISDIR:
    case ELOOP:
    case ENXIO:
      outcome_ = Outcome::Damaged;
      break;
    default:
      outcome_ = Outcome::Failed;
      break;
  }
  if (log == Log::Failures) report("cannot read", messageOf(error));
}

// Writing

void DefaultsFile::set(std::string_view key, const PropertyList& value) {
  // What others have written since must not be written over.
  isLookedAt_ = false;
  refresh();
  if (holds(key, value)) return;
  if (!value.isNull() && !xmlPropertyList(value)) {
    report("cannot store " + std::string(key) + " in", "no property list");
    return;
  }
  const std::error_code error = store(key, value);
  isLookedAt_ = false;
  // While a disk is full, one line says so.
  if (error && error != writeError_) report("cannot write", error.message());
  writeError_ = error;
}

bool DefaultsFile::holds(std::string_view key, const PropertyList& value) const {
  if (!contents_) return value.isNull();
  const auto entry = contents_->find(key);
  return entry == contents_->end() ? value.isNull() : entry->second == value;
}

std::error_code DefaultsFile::store(std::string_view key, const PropertyList& value) {
  makeDirectories(path_.parent_path());
  // A link stays one: what it leads to is replaced.
  const std::filesystem::path file = followLinks(path_);
  // Who could not wait for the other writer once does not wait again.
  const bool isStuck = writeError_ == std::errc::timed_out;
  FileReplacement replacement(file, isStuck ? std::chrono::milliseconds::zero() : kPatience);
  if (replacement.error()) return replacement.error();
  // Under the lock: what another process wrote just now must stay.
  load(State::of(path_));
  if (holds(key, value)) return {};
  if (outcome_ == Outcome::Failed) return {readError_, std::generic_category()};

  PropertyList::Dictionary changed = contents_.value_or(PropertyList::Dictionary());
  if (value.isNull()) {
    changed.erase(std::string(key));
  } else {
    changed.insert_or_assign(std::string(key), value);
  }
  const std::optional<std::string> bytes = xmlPropertyList(changed);
  if (!bytes) return std::make_error_code(std::errc::invalid_argument);
  if (outcome_ == Outcome::Damaged) {
    if (const std::error_code error = keepAside(file)) return error;
  }
  return replacement.commit(*bytes);
}

void DefaultsFile::report(std::string_view failure, std::string_view reason) const {
  if (log_ == Log::Nothing) return;
  std::string line = "UserDefaults: ";
  line.append(failure).append(" ").append(path_.string()).append(": ").append(reason);
  logLine(line);
}

}  // namespace vembrix
