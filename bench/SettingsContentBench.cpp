#include <benchmark/benchmark.h>

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "support/AllocationCounter.h"
#include "ui/PreferencesWindowController.h"

namespace vembrix {
namespace {

/// Builds the window's content before the system draws it: for the theme at that index, on that
/// tab, with that many Spaces.
void buildContent(benchmark::State& state) {
  const AppTheme& theme = AppTheme::all().at(static_cast<std::size_t>(state.range(0)));
  EmbeddedDesktop::shared().setSpaceCount(static_cast<std::size_t>(state.range(2)));
  SpaceManager::shared().reload();
  PreferencesStore::shared().setThemeName(theme.name);
  PreferencesWindowController& controller = PreferencesWindowController::shared();
  controller.setSelectedTabIndex(static_cast<int>(state.range(1)));
  const std::size_t before = allocationCount();
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(controller.buildContent());
  state.counters["allocations"] = benchmark::Counter(
      static_cast<double>(allocationCount() - before), benchmark::Counter::kAvgIterations);
  state.SetLabel(theme.name + ", " +
                 std::string(kTabs.at(static_cast<std::size_t>(state.range(1))).label));
}
constexpr int kColors = 1;
BENCHMARK(buildContent)
    ->ArgNames({"theme", "tab", "spaces"})
    ->ArgsProduct({{0, 1, 2, 3, 4, 5, 6}, {0, kColors}, {4}})
    ->ArgsProduct({{0, 1}, {kColors}, {64, 1024}});

}  // namespace
}  // namespace vembrix
