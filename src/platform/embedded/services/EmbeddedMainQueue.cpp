#include "platform/embedded/services/EmbeddedMainQueue.h"

#include <algorithm>

namespace vembrix {

EmbeddedMainQueue& EmbeddedMainQueue::shared() {
  static EmbeddedMainQueue queue;
  return queue;
}

void EmbeddedMainQueue::async(std::function<void()> block) {
  add(Duration::zero(), Duration::zero(), std::move(block));
}

void EmbeddedMainQueue::after(Duration delay, std::function<void()> block) {
  add(delay, Duration::zero(), std::move(block));
}

WorkItem EmbeddedMainQueue::schedule(Duration delay, std::function<void()> block) {
  return tokenFor(add(delay, Duration::zero(), std::move(block)));
}

TimerSource EmbeddedMainQueue::repeat(Duration delay, Duration interval,
                                      std::function<void()> block) {
  return tokenFor(add(delay, std::max(interval, Duration(1)), std::move(block)));
}

std::shared_ptr<EmbeddedMainQueue::Entry> EmbeddedMainQueue::add(Duration delay, Duration interval,
                                                                 std::function<void()> block) {
  const std::lock_guard lock(mutex_);
  auto entry = std::make_shared<Entry>(Entry{std::move(block), interval});
  entries_.emplace(Key{now_ + std::max(delay, Duration::zero()), sequence_++}, entry);
  return entry;
}

Token EmbeddedMainQueue::tokenFor(const std::shared_ptr<Entry>& entry) {
  return Token([entry] {
    entry->ended = true;
    // The captures of the block are destroyed with the token, unless the block is running.
    if (entry->running == 0) entry->block = nullptr;
  });
}

void EmbeddedMainQueue::advance(Duration duration) {
  const Duration target = now_ + duration;
  while (const auto entry = takeDue(target)) run(entry);
  const std::lock_guard lock(mutex_);
  now_ = std::max(now_, target);
}

void EmbeddedMainQueue::sleep(Duration duration) {
  const std::lock_guard lock(mutex_);
  now_ += duration;
}

void EmbeddedMainQueue::runUntilIdle(const std::function<bool()>& stop) {
  while (!stop()) {
    const auto entry = takeDue(Duration::max());
    if (!entry) return;
    run(entry);
  }
}

std::shared_ptr<EmbeddedMainQueue::Entry> EmbeddedMainQueue::takeDue(Duration limit) {
  const std::lock_guard lock(mutex_);
  while (!entries_.empty() && entries_.begin()->first.first <= limit) {
    auto node = entries_.extract(entries_.begin());
    if (node.mapped()->ended) continue;
    dueOfRunning_ = node.key().first;
    now_ = std::max(now_, dueOfRunning_);
    return node.mapped();
  }
  return nullptr;
}

void EmbeddedMainQueue::run(const std::shared_ptr<Entry>& entry) {
  if (entry->interval > Duration::zero()) {
    // The next beat after now, on the timer's own grid: several missed beats count as one.
    const Duration missed = (now_ - dueOfRunning_) / entry->interval * entry->interval;
    const std::lock_guard lock(mutex_);
    entries_.emplace(Key{dueOfRunning_ + missed + entry->interval, sequence_++}, entry);
  }
  entry->running += 1;
  entry->block();
  entry->running -= 1;
  // A token may keep the entry alive for long.
  const bool isOver = entry->ended || entry->interval == Duration::zero();
  if (isOver && entry->running == 0) entry->block = nullptr;
}

std::optional<Duration> EmbeddedMainQueue::nextDue() const {
  const std::lock_guard lock(mutex_);
  for (const auto& [key, entry] : entries_) {
    if (!entry->ended) return key.first;
  }
  return std::nullopt;
}

std::size_t EmbeddedMainQueue::pendingCount() const {
  const std::lock_guard lock(mutex_);
  return static_cast<std::size_t>(std::count_if(
      entries_.begin(), entries_.end(), [](const auto& pair) { return !pair.second->ended; }));
}

}  // namespace vembrix
