#include "platform/linux/defaults/DefaultsWriter.h"

#include <pthread.h>

#include <csignal>
#include <functional>
#include <future>
#include <utility>

#include "platform/SystemLog.h"
#include "platform/linux/defaults/FileReplacement.h"
#include "platform/linux/defaults/StoredFile.h"
#include "platform/linux/defaults/XmlPropertyList.h"

namespace vembrix {
namespace {

using Condition = StoredSettings::Condition;
using std::chrono::milliseconds;
using std::chrono::seconds;

/// Together with the writing, half a second.
constexpr milliseconds kGatheringTime{400};
constexpr seconds kRetryTime{5};
/// The longest wait at the end of the program.
constexpr seconds kLongestFinish{5};
/// The longest wait for another program that writes the file. Nearly as long as kLongestFinish,
/// since there is no later attempt.
constexpr seconds kPatience{4};

/// Waits until the bytes are on the disk. Meanwhile calls `change` repeatedly and writes changed
/// bytes at once, so that the next run finds them if this process is killed.
std::error_code bringToDisk(FileReplacement& replacement, const std::string& bytes,
                            const std::function<bool()>& change) {
  constexpr milliseconds kPause{50};
  if (const std::error_code failed = replacement.write(bytes)) return failed;
  bool isOnDisk = false;
  while (!isOnDisk) {
    isOnDisk = true;
    // Runs in this thread if the system has no other.
    std::future<std::error_code> sync = std::async([&replacement] { return replacement.sync(); });
    while (sync.wait_for(kPause) == std::future_status::timeout) {
      if (!change()) continue;
      isOnDisk = false;
      if (const std::error_code failed = replacement.write(bytes)) return failed;
    }
    if (const std::error_code failed = sync.get()) return failed;
  }
  return {};
}

std::string messageOf(std::error_code error) {
  return error ? error.message() : std::string();
}

}  // namespace

bool DefaultsWriter::Change::isOverruledBy(const std::optional<PropertyList>& stored) const {
  return stored && base && *stored != *base && stored != sent;
}

DefaultsWriter::DefaultsWriter(std::filesystem::path path) : path_(std::move(path)) {
  completeFormerWrite();
}

DefaultsWriter::~DefaultsWriter() {
  finish();
  {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
  }
  wake_.notify_all();
  if (thread_.joinable()) thread_.join();
}

bool DefaultsWriter::set(std::string_view key, PropertyList value,
                         std::optional<PropertyList> stored, int seenWrites) {
  const std::lock_guard lock(mutex_);
  // Otherwise this process's own write in between would count as another program's.
  if (seenWrites != writeCount_) return false;
  if (!std::exchange(isScheduled_, true)) due_ = Clock::now() + kGatheringTime;
  const auto [entry, isNew] = changes_.try_emplace(std::string(key));
  Change& change = entry->second;
  if (isNew || change.isOverruledBy(stored)) change.base = std::move(stored);
  change.value = std::move(value);
  wake_.notify_all();
  if (thread_.joinable()) return true;
  try {
    thread_ = std::thread([this] { run(); });
  } catch (const std::system_error&) {
    // The system has no free thread. It may have one for the next change, and finish() needs none.
  }
  return true;
}

std::optional<DefaultsWriter::Change> DefaultsWriter::change(std::string_view key) const {
  const std::lock_guard lock(mutex_);
  const auto found = changes_.find(key);
  return found == changes_.end() ? std::nullopt : std::optional(found->second);
}

void DefaultsWriter::withdraw(std::string_view key) {
  const std::lock_guard lock(mutex_);
  const auto found = changes_.find(key);
  // A write under way notices this itself.
  if (found != changes_.end() && !found->second.sent) changes_.erase(found);
}

int DefaultsWriter::writeCount() const {
  const std::lock_guard lock(mutex_);
  return writeCount_;
}

void DefaultsWriter::finish() {
  std::unique_lock lock(mutex_);
  if (changes_.empty()) return;
  if (!thread_.joinable()) {
    attempt(lock);
    return;
  }
  // An attempt under way may lack the last changes.
  hurriedFailures_ = failureCount_ + (isWriting_ ? 2 : 1);
  wake_.notify_all();
  attempted_.wait_for(lock, kLongestFinish, [&] { return changes_.empty() || !isHurried(); });
  hurriedFailures_ = 0;
}

void DefaultsWriter::completeFormerWrite() const {
  const std::filesystem::path file = followLinks(path_);
  const std::filesystem::path temporary = FileReplacement::temporaryOf(file);
  if (FileState::of(temporary).error != 0) return;
  // No other program is writing it. It is removed if it is of no use.
  FileReplacement replacement(file, milliseconds(0));
  if (replacement.error()) return;
  const StoredFile left(temporary);
  const StoredFile held(file);
  // The contents are incomplete if the writer did not finish or the machine has crashed. The time
  // of the state's change cannot be set by any program.
  const bool isNewer =
      held.settings.condition == Condition::Missing ||
      (held.settings.condition == Condition::Whole && held.state.changed < left.state.changed);
  if (left.settings.condition != Condition::Whole || !isNewer) return;
  std::error_code failed = replacement.sync();
  if (!failed) failed = replacement.commit();
  if (failed) report("cannot write", failed.message());
}

void DefaultsWriter::run() {
  // Signals are for the main thread; exceeding a limit of file sizes (SIGXFSZ) is then an ordinary
  // error.
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, nullptr);
  std::unique_lock lock(mutex_);
  while (true) {
    wake_.wait(lock, [this] { return isEnding_ || !changes_.empty(); });
    if (isEnding_) return;
    const auto due = due_;
    wake_.wait_until(lock, due, [&] { return isHurried() || isEnding_ || due_ < due; });
    const bool isDue = isHurried() || Clock::now() >= due_;
    if (isDue && !changes_.empty()) attempt(lock);
  }
}

void DefaultsWriter::attempt(std::unique_lock<std::mutex>& lock) {
  std::vector<Item> items = collect();
  isWriting_ = true;
  lock.unlock();
  const std::string failure = store(items);
  if (!failure.empty() && failure != lastFailure_) report("cannot write", failure);
  lock.lock();
  isWriting_ = false;
  writeCount_ += 1;
  failureCount_ += failure.empty() ? 0 : 1;
  for (const Item& item : items) {
    if (failure.empty()) {
      settle(item);
    } else if (const auto left = changes_.find(item.key); left != changes_.end()) {
      left->second.sent.reset();
    }
  }
  lastFailure_ = failure;
  if (!isScheduled_) due_ = Clock::now() + kRetryTime;
  attempted_.notify_all();
}

std::vector<DefaultsWriter::Item> DefaultsWriter::collect() {
  std::vector<Item> items;
  for (auto& [key, change] : changes_) {
    change.sent = change.value;
    items.push_back({key, change});
  }
  isScheduled_ = false;
  return items;
}

bool DefaultsWriter::collectLate(std::vector<Item>& items) {
  const std::lock_guard lock(mutex_);
  if (!isScheduled_ || !(isHurried() || Clock::now() >= due_)) return false;
  items = collect();
  return true;
}

void DefaultsWriter::settle(const Item& item) {
  const auto left = changes_.find(item.key);
  if (left == changes_.end()) return;
  Change& change = left->second;
  if (change.value == item.change.value) {
    changes_.erase(left);
    return;
  }
  // The value has changed again meanwhile.
  change.base = item.isOverruled ? std::nullopt : std::exchange(change.sent, std::nullopt);
  change.sent.reset();
}

std::string DefaultsWriter::store(std::vector<Item>& items) {
  makeDirectories(path_.parent_path());
  // A symbolic link is kept: its target is replaced.
  const std::filesystem::path file = followLinks(path_);
  FileReplacement replacement(file, kPatience);
  if (replacement.error()) return replacement.error().message();
  const Clock::time_point deadline = Clock::now() + kPatience;
  while (Clock::now() < deadline) {
    StoredFile contents(path_);
    const StoredSettings& found = contents.settings;
    if (found.condition == Condition::OutOfReach) return found.problem;
    if (found.condition == Condition::Unfinished) {
      std::this_thread::sleep_for(milliseconds(10));
      continue;
    }
    const bool isDamaged = found.condition == Condition::Damaged;
    const std::string bytes =
        found.condition == Condition::Whole ? std::move(contents.bytes) : std::string();
    const PropertyList::Dictionary* stored = isDamaged ? nullptr : &found.values;
    std::string merged = mergedInto(bytes, stored, items);
    if (merged == bytes) return {};
    const auto mergeLate = [&] {
      if (!collectLate(items)) return false;
      merged = mergedInto(bytes, stored, items);
      return true;
    };
    if (const std::error_code failed = bringToDisk(replacement, merged, mergeLate)) {
      return failed.message();
    }
    if (merged == bytes) return {};
    // Another program has written it before these bytes were on the disk.
    if (FileState::of(path_) != contents.state) continue;
    if (isDamaged) {
      if (const std::error_code failed = keepAside(file)) return failed.message();
    }
    return messageOf(replacement.commit());
  }
  return "another program is writing it";
}

std::string DefaultsWriter::mergedInto(std::string bytes, const PropertyList::Dictionary* stored,
                                       std::vector<Item>& items) {
  const bool isNew = bytes.empty();
  const std::string start =
      isNew ? *writePropertyList(PropertyList::Dictionary()) : std::move(bytes);
  std::string merged = start;
  for (Item& item : items) {
    std::optional<PropertyList> held;
    if (stored) {
      const auto entry = stored->find(item.key);
      held = entry == stored->end() ? PropertyList() : entry->second;
    }
    // Compares with the file's own value, not with an earlier one that was sent.
    Change change = item.change;
    change.sent.reset();
    item.isOverruled = change.isOverruledBy(held);
    if (item.isOverruled || held == change.value) continue;
    std::optional<std::string> with = changedPropertyList(merged, item.key, change.value);
    if (with && with->size() <= kPropertyListLimit) {
      merged = *std::move(with);
      refused_.erase(item.key);
    } else if (refused_.insert(item.key).second) {
      report("cannot store " + item.key + " in", "too large");
    }
  }
  return isNew && merged == start ? std::string() : merged;
}

void DefaultsWriter::report(std::string_view failure, std::string_view reason) const {
  std::string line = "UserDefaults: ";
  line.append(failure).append(" ").append(path_.string()).append(": ").append(reason);
  logLine(line);
}

}  // namespace vembrix
