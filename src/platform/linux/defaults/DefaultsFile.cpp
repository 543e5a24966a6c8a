#include "platform/linux/defaults/DefaultsFile.h"

#include <chrono>
#include <thread>
#include <utility>

#include "platform/SystemLog.h"

namespace vembrix {
namespace {

using Condition = StoredSettings::Condition;

/// The time within which two changes may look the same: one tick of the file system's clock, mostly
/// milliseconds, two seconds at the most.
constexpr std::chrono::nanoseconds kSettlingTime = std::chrono::seconds(3);

}  // namespace

DefaultsFile::DefaultsFile(std::filesystem::path path, Log log)
    : path_(std::move(path)), log_(log) {}

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

bool DefaultsFile::isCertain() const {
  return condition_ == Condition::Whole || condition_ == Condition::Missing;
}

void DefaultsFile::hold() {
  if (holds_++ == 0) isLookedAt_ = false;
}

void DefaultsFile::refresh() {
  if (holds_ > 0 && isLookedAt_) return;
  isLookedAt_ = true;
  if (settled_ && FileState::of(path_) == state_) return;
  load();
  // At the start there are no earlier contents to keep, and some settings are read only then.
  constexpr std::chrono::milliseconds kPause{10};
  constexpr int kMostPauses = 100;
  for (int i = 0; i < kMostPauses && !hasBeenRead_ && condition_ == Condition::Unfinished; ++i) {
    std::this_thread::sleep_for(kPause);
    load();
  }
  hasBeenRead_ = true;
}

void DefaultsFile::load() {
  const std::int64_t start = fileClock();
  FileState state = FileState::of(path_);
  const int error = state.error != 0 ? state.error : readStoredFile(path_, state, scratch_);
  const bool isNew = state != state_ || error != readError_;
  const bool wereBytes = readError_ == 0 && condition_ != Condition::Unfinished;
  state_ = state;
  readError_ = error;
  if (error != 0) {
    bytes_.clear();
    if (isNew) take(StoredSettings::ofError(error), log_);
  } else if (!wereBytes || scratch_ != bytes_) {
    std::swap(bytes_, scratch_);
    // Reserved so that the next reading allocates nothing.
    scratch_.reserve(bytes_.size() + 1);
    take(StoredSettings::ofBytes(bytes_, state), log_);
  }
  // A change after the start of the reading either shows in the state or happens within a tick of
  // the change that the state shows.
  const bool hasAged = start - state.changed > kSettlingTime.count();
  settled_ = (isCertain() || condition_ == Condition::Damaged) && (state.error != 0 || hasAged);
}

void DefaultsFile::take(StoredSettings found, Log log) {
  condition_ = found.condition;
  if (condition_ == Condition::Unfinished) return;
  // Changes of a file that cannot be opened are unknown.
  const bool isUnknown = condition_ == Condition::OutOfReach && readError_ != 0;
  if (condition_ == Condition::Whole) {
    contents_ = std::move(found.values);
  } else if (!isUnknown) {
    contents_.reset();
  }
  const bool isWrong = condition_ == Condition::Damaged || condition_ == Condition::OutOfReach;
  if (isWrong && log == Log::Failures) report(found.problem);
}

void DefaultsFile::report(std::string_view problem) const {
  std::string line = "UserDefaults: cannot read ";
  line.append(path_.string()).append(": ").append(problem);
  logLine(line);
}

}  // namespace vembrix
