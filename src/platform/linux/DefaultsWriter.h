#pragma once

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/PropertyList.h"

namespace vembrix {

/// Brings changed settings to their file from a thread of its own, so that nobody waits
/// for the disk: gathered for 0.4 s, all that was gathered at once, without touching
/// what else the file holds. What fails is tried again until it works. Failures are
/// logged, the same one once. To be called from one thread.
class DefaultsWriter {
 public:
  /// A value that the file may not hold yet.
  struct Change {
    /// Null removes the key.
    PropertyList value;
    /// What the file held when the change was made; nothing when nobody knew.
    std::optional<PropertyList> base;
    /// What is being written at the moment.
    std::optional<PropertyList> sent;

    /// Whether another program has written a newer value: one that is neither the
    /// former value nor our own. Not when it is unknown what the file holds.
    bool isOverruledBy(const std::optional<PropertyList>& stored) const;
  };

  /// Completes the write of a run that was killed while it waited for the disk.
  explicit DefaultsWriter(std::filesystem::path path);
  /// Finishes.
  ~DefaultsWriter();
  DefaultsWriter(const DefaultsWriter&) = delete;
  DefaultsWriter& operator=(const DefaultsWriter&) = delete;

  /// `stored` is what the file holds under the key, when that is known. Refused, false,
  /// when `stored` may be out of date: unless it was read after the write that
  /// writeCount() had counted as `seenWrites`.
  [[nodiscard]] bool set(std::string_view key, PropertyList value,
                         std::optional<PropertyList> stored, int seenWrites);

  /// Of the key; nothing when the file holds what was set last.
  [[nodiscard]] std::optional<Change> change(std::string_view key) const;

  /// Forgets a change that another program has overruled.
  void withdraw(std::string_view key);

  /// Grows whenever the file was written.
  [[nodiscard]] int writeCount() const;

  /// Writes what is left, now, and returns when it is in the file, or when that has
  /// failed, after 5 s at the latest. For the end of the process.
  void finish();

 private:
  using Clock = std::chrono::steady_clock;

  /// A change on its way.
  struct Item {
    std::string key;
    Change change;
    bool isOverruled = false;
  };

  void completeFormerWrite() const;
  void run();
  bool isHurried() const { return failureCount_ < hurriedFailures_; }
  /// Tries to write what there is. Lets go of the lock meanwhile.
  void attempt(std::unique_lock<std::mutex>& lock);
  /// All that is to be written now.
  std::vector<Item> collect();
  void settle(const Item& item);
  // Without the lock; empty, or why it failed.
  std::string store(std::vector<Item>& items);
  /// Whether more has become due; then it is among the items.
  bool collectLate(std::vector<Item>& items);
  std::string mergedInto(std::string bytes, const PropertyList::Dictionary* stored,
                         std::vector<Item>& items);
  void report(std::string_view failure, std::string_view reason) const;

  const std::filesystem::path path_;

  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable attempted_;
  std::map<std::string, Change, std::less<>> changes_;
  Clock::time_point due_;
  /// Whether that is for a change that was made after the last try began.
  bool isScheduled_ = false;
  /// Nothing is waited for until so many tries have failed.
  int hurriedFailures_ = 0;
  bool isEnding_ = false;
  bool isWriting_ = false;
  int failureCount_ = 0;
  int writeCount_ = 0;
  std::string lastFailure_;
  /// The keys whose last values made the file too large.
  std::set<std::string> refused_;
  std::thread thread_;
};

}  // namespace vembrix
