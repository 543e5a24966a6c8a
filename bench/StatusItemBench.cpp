#include <benchmark/benchmark.h>

#include "AllocationsPerIteration.h"
#include "menubar/MenuBarController.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

/// One refresh of the title while the last of that many Spaces is active: with default colours (0)
/// or with colours stored for every Space (1).
void refreshTitle(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  EmbeddedDesktop& desktop = EmbeddedDesktop::shared();
  desktop.setSpaceCount(count);
  desktop.activate(desktop.spaceAt(count - 1));
  SpaceManager::shared().reload();
  PreferencesStore& store = PreferencesStore::shared();
  if (state.range(1) == 1) {
    store.applyPalette(PreferencesStore::palettes().front());
  } else {
    store.setSpaceColors({});
  }
  const auto controller = MenuBarController::create();
  const AllocationsPerIteration allocations(state);
  for ([[maybe_unused]] auto _ : state) controller->refreshTitle();
}
BENCHMARK(refreshTitle)->ArgsProduct({{4, 64, 1024}, {0, 1}});

}  // namespace
}  // namespace vembrix
