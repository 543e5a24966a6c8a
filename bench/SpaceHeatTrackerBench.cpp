#include <benchmark/benchmark.h>

#include "AllocationsPerIteration.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "spaces/SpaceManager.h"
#include "watchers/SpaceHeatTracker.h"

namespace vembrix {
namespace {

/// A key press in the last of that many Spaces, which is the most recent one.
void engagementInTheFirstSpace(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  EmbeddedDesktop& desktop = EmbeddedDesktop::shared();
  desktop.setSpaceCount(count);
  desktop.activate(desktop.spaceAt(count - 1));
  SpaceManager::shared().reload();
  SpaceHeatTracker::shared().start();
  desktop.input().send(KeyDown);
  const AllocationsPerIteration allocations(state);
  for ([[maybe_unused]] auto _ : state) desktop.input().send(KeyDown);
  state.SetComplexityN(state.range(0));
}
BENCHMARK(engagementInTheFirstSpace)->Arg(4)->Arg(64)->Arg(1024)->Complexity(benchmark::oN);

/// The heat of the least recently used of that many Spaces.
void heat(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  EmbeddedDesktop& desktop = EmbeddedDesktop::shared();
  desktop.setSpaceCount(count);
  SpaceHeatTracker& tracker = SpaceHeatTracker::shared();
  tracker.start();
  for (std::size_t i = 0; i < count; ++i) {
    desktop.activate(desktop.spaceAt(i));
    SpaceManager::shared().reload();
    desktop.input().send(KeyDown);
  }
  const std::string uuid = SpaceManager::shared().spaces().front().uuid;
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(tracker.heat(uuid, IncludingActive::No));
  }
}
BENCHMARK(heat)->Arg(4)->Arg(32);

}  // namespace
}  // namespace vembrix
