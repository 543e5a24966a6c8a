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

/// Writes changed settings to their file on a thread of its own, so that no caller waits for the
/// disk: collects changes for 0.4 s, then writes them together and keeps the rest of the file. A
/// failed write is repeated until it succeeds; each kind of failure is logged once. To be called
/// from one thread.
class DefaultsWriter {
 public:
  /// A value that the file may not hold yet.
  struct Change {
    /// Null removes the key.
    PropertyList value;
    /// The file's value when the change was made; empty when unknown.
    std::optional<PropertyList> base;
    /// The value that is being written.
    std::optional<PropertyList> sent;

    /// Returns whether another program has written a newer value: one that is neither the former
    /// value nor this process's. False when the file's value is unknown.
    bool isOverruledBy(const std::optional<PropertyList>& stored) const;
  };

  /// Completes the write of an earlier process that was killed while it waited for the disk.
  explicit DefaultsWriter(std::filesystem::path path);
  /// Calls finish().
  ~DefaultsWriter();
  DefaultsWriter(const DefaultsWriter&) = delete;
  DefaultsWriter& operator=(const DefaultsWriter&) = delete;

  /// Sets the value for the next write. `stored` is the file's value, where known. Returns false
  /// and does nothing when the file was written after writeCount() returned `seenWrites`, as
  /// `stored` may then be out of date.
  [[nodiscard]] bool set(std::string_view key, PropertyList value,
                         std::optional<PropertyList> stored, int seenWrites);

  /// Returns the key's pending change; empty if the file holds the last value set.
  [[nodiscard]] std::optional<Change> change(std::string_view key) const;

  /// Forgets a change that another program has overruled.
  void withdraw(std::string_view key);

  /// Counts the writes of the file.
  [[nodiscard]] int writeCount() const;

  /// Writes all pending changes now and waits, for at most 5 s, until they are in the file or that
  /// has failed. For the end of the process.
  void finish();

 private:
  using Clock = std::chrono::steady_clock;

  /// A change that is being written.
  struct Item {
    std::string key;
    Change change;
    bool isOverruled = false;
  };

  void completeFormerWrite() const;
  void run();
  bool isHurried() const { return failureCount_ < hurriedFailures_; }
  /// Tries to write the pending changes. Releases the lock meanwhile.
  void attempt(std::unique_lock<std::mutex>& lock);
  /// Returns the changes to write.
  std::vector<Item> collect();
  void settle(const Item& item);
  // To be called without the lock. Returns the reason of a failure; empty for success.
  std::string store(std::vector<Item>& items);
  /// Appends changes that have become due meanwhile; returns whether there were any.
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
  /// Whether that is for a change made after the last attempt began.
  bool isScheduled_ = false;
  /// The number of failed attempts at which a hurried write gives up.
  int hurriedFailures_ = 0;
  bool isEnding_ = false;
  bool isWriting_ = false;
  int failureCount_ = 0;
  int writeCount_ = 0;
  std::string lastFailure_;
  /// Keys whose last values would have made the file too large.
  std::set<std::string> refused_;
  std::thread thread_;
};

}  // namespace vembrix
