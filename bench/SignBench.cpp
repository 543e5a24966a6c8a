#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

#include "AllocationsPerIteration.h"
#include "labels/SpaceSignWindowController.h"
#include "platform/NotificationCenter.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"
#include "spaces/SpaceManager.h"
#include "watchers/SpaceHeatTracker.h"

namespace vembrix {
namespace {

/// Creates a controller at rest with a label in each of that many desktops. The last desktops were
/// used; the last one is active.
std::shared_ptr<SpaceSignWindowController> makeLabels(std::size_t count) {
  EmbeddedDesktop& desktop = EmbeddedDesktop::shared();
  desktop.setSpaceCount(count);
  desktop.activate(desktop.spaceAt(0));
  SpaceManager::shared().reload();
  SpaceHeatTracker::shared().start();
  auto controller = SpaceSignWindowController::create();
  for (std::size_t place = 1; place < count; ++place) {
    desktop.activate(desktop.spaceAt(place));
    SpaceManager::shared().reload();
    if (count - place <= 32) desktop.input().send(KeyDown);
  }
  EmbeddedMainQueue::shared().advance(std::chrono::seconds(1));
  return controller;
}

/// The cost of a tick every half second, without the timer itself.
void primingTick(benchmark::State& state) {
  const auto controller = makeLabels(static_cast<std::size_t>(state.range(0)));
  const AllocationsPerIteration allocations(state);
  for ([[maybe_unused]] auto _ : state) EmbeddedDesktop::shared().wake();
  state.SetComplexityN(state.range(0));
}
BENCHMARK(primingTick)->Arg(4)->Arg(64)->Arg(1024)->Complexity(benchmark::oN);

/// The cost of a click that changes the order of the desktops but no label.
void heatRefresh(benchmark::State& state) {
  const auto controller = makeLabels(static_cast<std::size_t>(state.range(0)));
  const AllocationsPerIteration allocations(state);
  for ([[maybe_unused]] auto _ : state) {
    NotificationCenter::defaultCenter().post(SpaceHeatTracker::didChange);
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(heatRefresh)->Arg(4)->Arg(64)->Arg(1024)->Complexity(benchmark::oN);

/// Five seconds at rest: ten ticks and one check of the labels' Spaces, including the answers of
/// the window server in the process, which searches its windows for each.
void tenTicksWithReconciliation(benchmark::State& state) {
  const auto controller = makeLabels(static_cast<std::size_t>(state.range(0)));
  const AllocationsPerIteration allocations(state);
  for ([[maybe_unused]] auto _ : state) {
    EmbeddedMainQueue::shared().advance(std::chrono::seconds(5));
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(tenTicksWithReconciliation)->Arg(4)->Arg(64)->Arg(1024)->Complexity();

}  // namespace
}  // namespace vembrix
