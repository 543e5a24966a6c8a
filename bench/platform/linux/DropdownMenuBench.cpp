#include <benchmark/benchmark.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "BenchSession.h"
#include "menubar/SpaceRow.h"
#include "platform/DropdownMenu.h"
#include "platform/linux/menubar/NativeDropdownMenu.h"

namespace vembrix {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr QPoint kCorner{40, 24};

/// Notices when a menu has been painted with its whole content.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QMenu& menu) : menu_(menu) { menu_.installEventFilter(this); }

  /// Returns the time from `open` until the menu is on the screen for the first time; closes it.
  Seconds timeOf(const std::function<void()>& open) {
    isPainted_ = false;
    const auto start = std::chrono::steady_clock::now();
    open();
    while (!isPainted_) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const auto end = std::chrono::steady_clock::now();
    menu_.close();
    QCoreApplication::processEvents();
    return end - start;
  }

  bool eventFilter(QObject* object, QEvent* event) override {
    // The rows are painted in the same turn of the event loop.
    if (event->type() == QEvent::Paint) isPainted_ = true;
    return QObject::eventFilter(object, event);
  }

 private:
  QMenu& menu_;
  bool isPainted_ = false;
};

std::vector<MenuItem> rows(int count) {
  std::vector<MenuItem> items;
  for (int number = 1; number <= count; ++number) {
    items.emplace_back(SpaceRow::create({.displayName = "Desktop " + std::to_string(number),
                                         .isActive = number == 1,
                                         .dotColor = Srgb{1.0, 0.71, 0.76},
                                         .heatGlow = {}},
                                        {}));
  }
  return items;
}

void addActions(QMenu& menu, int count) {
  for (int number = 1; number <= count; ++number) {
    menu.addAction(QStringLiteral("Desktop %1").arg(number));
  }
}

double median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// From opening a dropdown with that many rows to its first paint, and the ratio to a plain menu of
/// Qt's with as many items: with its former items (0), or with new ones, as in the program (1).
void openDropdownMenu(benchmark::State& state) {
  useBenchSession();
  const int count = static_cast<int>(state.range(0));
  const bool isRebuilt = state.range(1) == 1;
  const auto dropdown = DropdownMenu::create();
  auto& native = static_cast<NativeDropdownMenu&>(*dropdown);
  dropdown->setItems(rows(count));
  if (isRebuilt) dropdown->setNeedsUpdateHandler([&] { dropdown->setItems(rows(count)); });
  QMenu plain;
  addActions(plain, count);
  const auto openPlain = [&] {
    if (isRebuilt) {
      plain.clear();
      addActions(plain, count);
    }
    plain.popup(kCorner);
  };
  PaintWatch dropdownWatch(native.widget());
  PaintWatch plainWatch(plain);
  std::vector<double> dropdownTimes;
  std::vector<double> plainTimes;
  for ([[maybe_unused]] auto _ : state) {
    const Seconds time = dropdownWatch.timeOf([&] {
      native.open({kCorner, QSize(1, 1)}, NativeDropdownMenu::OpenedBy::Click);
    });
    state.SetIterationTime(time.count());
    dropdownTimes.push_back(time.count());
    plainTimes.push_back(plainWatch.timeOf(openPlain).count());
  }
  const double dropdownTime = median(dropdownTimes);
  const double plainTime = median(plainTimes);
  constexpr double kMicroseconds = 1e6;
  state.counters["median_us"] = dropdownTime * kMicroseconds;
  state.counters["plain_median_us"] = plainTime * kMicroseconds;
  state.counters["ratio"] = dropdownTime / plainTime;
}
BENCHMARK(openDropdownMenu)
    ->ArgsProduct({{16}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vembrix
