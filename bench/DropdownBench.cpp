#include <benchmark/benchmark.h>

#include "menubar/MenuBarController.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/faces/RecordingDropdownMenu.h"
#include "platform/embedded/faces/RecordingStatusItem.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

/// Opens the dropdown with that many Spaces: with default colours (0), or with a colour and a name
/// stored for every Space (1).
void openDropdown(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  EmbeddedDesktop::shared().setSpaceCount(count);
  SpaceManager& manager = SpaceManager::shared();
  manager.reload();
  PreferencesStore& store = PreferencesStore::shared();
  store.setSpaceColors({});
  if (state.range(1) == 1) store.applyPalette(PreferencesStore::palettes().front());
  for (const SpaceInfo& space : manager.spaces()) {
    manager.setName(state.range(1) == 1 ? "Work" : "", space);
  }
  const auto controller = MenuBarController::create();
  auto& menu = static_cast<RecordingDropdownMenu&>(*RecordingStatusItem::current()->menu());
  const std::size_t before = allocationCount();
  for ([[maybe_unused]] auto _ : state) {
    menu.open();
    menu.close();
  }
  state.counters["allocations"] = benchmark::Counter(
      static_cast<double>(allocationCount() - before), benchmark::Counter::kAvgIterations);
  state.counters["rows"] = static_cast<double>(menu.rows().size());
}
BENCHMARK(openDropdown)->ArgsProduct({{16, 256}, {0, 1}})->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vembrix
