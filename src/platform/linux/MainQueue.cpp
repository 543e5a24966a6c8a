#include "platform/MainQueue.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>
#include <QTimerEvent>
#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/linux/LoopEvents.h"

namespace vembrix {
namespace {

/// Posts the event that wakes the loop, from any thread. A separate function, because the thread
/// sanitizer does not see how Qt hands an event from one thread to another, and therefore ignores
/// what is allocated here.
void postWakeUp(QObject& receiver) {
  QCoreApplication::postEvent(&receiver, new QEvent(QEvent::User));
}

/// The queue on Qt's event loop, nested loops (menus) included. Works before
/// there is a Qt application: what is due then runs when its loop does.
///
/// One list by due time holds what is to run; a posted event runs what is due, a
/// single Qt timer stands for the next entry. A repeating entry that is on time
/// gets a Qt timer of its own, which costs the least at each beat; one that has
/// missed a beat goes back to the list, since Qt would not keep its rhythm. A poll
/// leaves the list at each beat and comes back with the next event. Made on the
/// main thread.
class QtMainQueue : public QObject, public MainQueue {
 public:
  void async(std::function<void()> block) override {
    add(Duration::zero(), Duration::zero(), std::move(block));
    wake();
  }

  void after(Duration delay, std::function<void()> block) override {
    add(delay, Duration::zero(), std::move(block));
    arm();
  }

  WorkItem schedule(Duration delay, std::function<void()> block) override {
    const auto entry = add(delay, Duration::zero(), std::move(block));
    arm();
    return tokenFor(entry);
  }

  TimerSource repeat(Duration delay, Duration interval, std::function<void()> block) override {
    const auto entry = add(delay, std::max(interval, Duration(1)), std::move(block));
    arm();
    return tokenFor(entry);
  }

  TimerSource poll(Duration delay, Duration interval, std::function<void()> block) override {
    const auto entry = add(delay, std::max(interval, Duration(1)), std::move(block));
    entry->isPoll = true;
    arm();
    return tokenFor(entry);
  }

  void note(const QObject* receiver) {
    // The queue's own events do not end the rest by themselves; a block that is no poll does.
    if (receiver != this) endRest();
  }

  bool event(QEvent* event) override {
    if (event->type() == QEvent::User) {
      {
        const std::lock_guard lock(mutex_);
        isWaking_ = false;
      }
      runDue();
      return true;
    }
    if (event->type() == QEvent::Timer) {
      const int timer = static_cast<QTimerEvent*>(event)->timerId();
      if (timer == timer_) {
        disarm();
        runDue();
      } else {
        beat(timer);
      }
      return true;
    }
    return QObject::event(event);
  }

 private:
  /// The due time, then the order of entry.
  using Key = std::pair<Duration, std::uint64_t>;
  struct Entry {
    std::function<void()> block;
    /// The interval of repetition; zero for blocks that run once.
    Duration interval{};
    Key key;
    /// The id of the entry's own timer; 0 while it is in the list. Main thread only.
    int timer = 0;
    /// Whether its beats are skipped while there are no events.
    bool isPoll = false;
    /// The next beat of a resting poll by its rhythm, which the key does not keep.
    Duration beat{};
  };
  using Entries = std::map<Key, std::shared_ptr<Entry>>;

  static Duration now() { return std::chrono::steady_clock::now().time_since_epoch(); }

  std::shared_ptr<Entry> add(Duration delay, Duration interval, std::function<void()> block) {
    auto entry = std::make_shared<Entry>();
    entry->block = std::move(block);
    entry->interval = interval;
    const Duration start = now();
    const std::lock_guard lock(mutex_);
    insert(entry, start + std::clamp(delay, Duration::zero(), Duration::max() - start));
    return entry;
  }

  void insert(const std::shared_ptr<Entry>& entry, Duration due) {
    entry->key = {due, sequence_++};
    entries_.emplace(entry->key, entry);
  }

  Token tokenFor(const std::shared_ptr<Entry>& entry) {
    return Token([this, weak = std::weak_ptr(entry)] {
      if (const auto entry = weak.lock()) end(*entry);
    });
  }

  /// Ends an entry and destroys its block now instead of at its due time.
  void end(const Entry& entry) {
    // Destroying the block may call this function.
    std::shared_ptr<Entry> gone;
    if (entry.timer != 0) {
      killTimer(entry.timer);
      gone = takeFrom(beating_, entry);
      return;
    }
    Entries::node_type ended;
    const auto resting =
        std::ranges::find(resting_, &entry, [](const auto& node) { return node.mapped().get(); });
    if (resting != resting_.end()) {
      ended = std::move(*resting);
      resting_.erase(resting);
      return;
    }
    const std::lock_guard lock(mutex_);
    ended = entries_.extract(entry.key);
  }

  /// Removes the entry from the list; returns null if it is not there.
  static std::shared_ptr<Entry> takeFrom(std::vector<std::shared_ptr<Entry>>& list,
                                         const Entry& entry) {
    const auto found =
        std::ranges::find(list, &entry, [](const auto& other) { return other.get(); });
    if (found == list.end()) return nullptr;
    std::shared_ptr<Entry> taken = std::move(*found);
    list.erase(found);
    return taken;
  }

  void runDue() {
    // What the blocks add waits for the next round, so that events are handled in between.
    const Duration limit = now();
    Duration time = limit;
    while (const std::shared_ptr<Entry> entry = takeDue(limit, time)) {
      // Armed before the block runs: it may open a menu, whose loop must run the other entries.
      arm(time);
      if (!entry->isPoll) endRest();
      entry->block();
      time = now();
    }
    arm(time);
  }

  /// Takes out the first entry that is due by `limit`; a repeating one is put in
  /// again for its next beat after `time`. Null when none is due.
  std::shared_ptr<Entry> takeDue(Duration limit, Duration time) {
    const std::lock_guard lock(mutex_);
    if (entries_.empty() || entries_.begin()->first.first > limit) return nullptr;
    Entries::node_type node = entries_.extract(entries_.begin());
    std::shared_ptr<Entry> entry = node.mapped();
    if (entry->isPoll) {
      // Rests from before its beat runs, so that an event that the beat causes is not missed.
      if (entry->beat == Duration::zero()) entry->beat = entry->key.first;
      if (entry->beat <= time) entry->beat = nextBeat(entry->beat, entry->interval, time);
      resting_.push_back(std::move(node));
    } else if (entry->interval > Duration::zero() && !startBeating(entry, time)) {
      insert(entry, nextBeat(entry->key.first, entry->interval, time));
    }
    return entry;
  }

  /// Returns the first beat after `time` of a rhythm with a beat at `due`, which has passed.
  static Duration nextBeat(Duration due, Duration interval, Duration time) {
    return due + (time - due) / interval * interval + interval;
  }

  /// Gives a due entry a timer of its own. Returns false, without one, where the entry is late or
  /// its interval is not in whole milliseconds, Qt's unit.
  bool startBeating(const std::shared_ptr<Entry>& entry, Duration time) {
    constexpr std::chrono::milliseconds kUnit{1};
    const auto interval = std::chrono::floor<std::chrono::milliseconds>(entry->interval);
    if (interval != entry->interval || interval > kMaxTimer) return false;
    if (time - entry->key.first > kUnit || !QAbstractEventDispatcher::instance()) return false;
    entry->timer = startTimer(interval, Qt::PreciseTimer);
    if (entry->timer == 0) return false;
    entry->key.first += entry->interval;
    beating_.push_back(entry);
    return true;
  }

  std::vector<std::shared_ptr<Entry>>::iterator beatOf(int timer) {
    return std::ranges::find(beating_, timer, [](const auto& entry) { return entry->timer; });
  }

  void beat(int timer) {
    const auto found = beatOf(timer);
    if (found == beating_.end()) return;
    const std::shared_ptr<Entry> entry = *found;
    const Duration time = now();
    if (time - entry->key.first < entry->interval) {
      entry->key.first += entry->interval;
    } else {
      killTimer(std::exchange(entry->timer, 0));
      beating_.erase(found);
      {
        const std::lock_guard lock(mutex_);
        insert(entry, nextBeat(entry->key.first, entry->interval, time));
      }
      arm(time);
    }
    endRest();
    entry->block();
  }

  /// Lets the polls beat once more: all together when the first one is due, in one wake-up.
  void endRest() {
    if (resting_.empty()) return;
    const Duration time = now();
    Duration first = Duration::max();
    for (const Entries::node_type& node : resting_) {
      Entry& entry = *node.mapped();
      if (entry.beat <= time) entry.beat = nextBeat(entry.beat, entry.interval, time);
      first = std::min(first, entry.beat);
    }
    {
      const std::lock_guard lock(mutex_);
      for (Entries::node_type& node : resting_) {
        node.key() = node.mapped()->key = {first, sequence_++};
        entries_.insert(std::move(node));
      }
    }
    resting_.clear();
    arm(time);
  }

  /// Makes the event loop run the queue soon. Any thread.
  void wake() {
    {
      const std::lock_guard lock(mutex_);
      if (std::exchange(isWaking_, true)) return;
    }
    postWakeUp(*this);
  }

  void arm() { arm(now()); }

  /// Makes the event loop run the queue when the next entry is due. `time` is the present time.
  void arm(Duration time) {
    Duration due{};
    {
      const std::lock_guard lock(mutex_);
      if (entries_.empty()) return;
      due = entries_.begin()->first.first;
    }
    if (timer_ != 0 && due == timerDue_) return;
    // Without an event dispatcher there are no timers yet: the loop sets its own when it runs the
    // queue.
    const Duration left = due - time;
    if (left <= Duration::zero() || !QAbstractEventDispatcher::instance()) {
      wake();
    } else {
      disarm();
      timerDue_ = due;
      timer_ = startTimer(std::min(std::chrono::ceil<std::chrono::milliseconds>(left), kMaxTimer),
                          Qt::PreciseTimer);
    }
  }

  void disarm() {
    if (timer_ != 0) killTimer(std::exchange(timer_, 0));
  }

  /// The longest interval that Qt's timers accept; longer waits continue with another timer.
  static constexpr std::chrono::milliseconds kMaxTimer = std::chrono::hours(24);

  std::mutex mutex_;
  Entries entries_;
  std::uint64_t sequence_ = 0;
  bool isWaking_ = false;

  // Main thread only.
  int timer_ = 0;
  Duration timerDue_{};
  /// Entries that have a timer of their own. The key holds the time of the next beat.
  std::vector<std::shared_ptr<Entry>> beating_;
  /// Polls whose next beat waits for an event.
  std::vector<Entries::node_type> resting_;
};

QtMainQueue& qtQueue() {
  // Never destroyed: tokens and other threads may reach it until the very end.
  static auto& queue = *new QtMainQueue;
  return queue;
}

}  // namespace

MainQueue& MainQueue::main() {
  return qtQueue();
}

void noteLoopEvent(const QObject* receiver) {
  qtQueue().note(receiver);
}

}  // namespace vembrix
