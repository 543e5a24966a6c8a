#include <benchmark/benchmark.h>

#include <utility>

#include "AllocationsPerIteration.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

void setSpaces(std::size_t count) {
  EmbeddedDesktop::shared().setSpaceCount(count);
  for (int i = 0; i < 3; ++i) SpaceManager::shared().reload();
}

/// The reload at every switch of Spaces and every opening of the dropdown.
void reloadUnchanged(benchmark::State& state) {
  setSpaces(static_cast<std::size_t>(state.range(0)));
  const AllocationsPerIteration allocations(state);
  for ([[maybe_unused]] auto _ : state) SpaceManager::shared().reload();
  state.SetComplexityN(state.range(0));
}
BENCHMARK(reloadUnchanged)->Arg(4)->Arg(64)->Arg(1024)->Complexity(benchmark::oN);

/// A Space is added and removed in turn with each reload.
void reloadChanged(benchmark::State& state) {
  setSpaces(static_cast<std::size_t>(state.range(0)));
  EmbeddedDesktop& desktop = EmbeddedDesktop::shared();
  EmbeddedDesktop::SpaceID visitor = 0;
  for ([[maybe_unused]] auto _ : state) {
    state.PauseTiming();
    if (visitor == 0) {
      visitor = desktop.addSpace("Main", EmbeddedDesktop::SpaceType::Desktop, "visitor");
    } else {
      desktop.removeSpace(std::exchange(visitor, 0));
    }
    (void)desktop.windowServer().CGSCopyManagedDisplaySpaces(1);
    state.ResumeTiming();
    SpaceManager::shared().reload();
  }
  if (visitor != 0) desktop.removeSpace(visitor);
  state.SetComplexityN(state.range(0));
}
BENCHMARK(reloadChanged)->Arg(4)->Arg(64)->Arg(1024)->Complexity(benchmark::oN);

}  // namespace
}  // namespace vembrix
