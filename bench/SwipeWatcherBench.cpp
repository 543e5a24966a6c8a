#include <benchmark/benchmark.h>

#include "AllocationsPerIteration.h"
#include "platform/DockSwipeEvent.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "spaces/SwipeWatcher.h"

namespace vembrix {
namespace {

/// Returns an event that is not a swipe of the user, by the number of fields that must be read to
/// see that: 1 was posted by a process, 2 is of another type, 3 is another gesture.
GestureEvent otherEvent(std::int64_t fieldCount) {
  GestureEvent event;
  event.setIntegerField(dockswipe::SourceProcess, fieldCount == 1 ? 77 : 0);
  event.setIntegerField(dockswipe::EventType, fieldCount == 2 ? 5 : dockswipe::kDockControl);
  event.setIntegerField(dockswipe::GestureKind, 8);
  return event;
}

/// Sends such an event to the only tap.
void send(benchmark::State& state) {
  EventStream& events = EmbeddedDesktop::shared().events();
  const GestureEvent event = otherEvent(state.range(0));
  const AllocationsPerIteration allocations(state);
  for ([[maybe_unused]] auto _ : state) events.sendToTaps(5, event);
}

/// The cost of reaching a handler.
void tapThatDoesNothing(benchmark::State& state) {
  const auto tap = EventTap::create(
      [](std::uint32_t, const TappedEvent& event) { benchmark::DoNotOptimize(&event); });
  tap->enable();
  send(state);
}
BENCHMARK(tapThatDoesNothing)->DenseRange(1, 3);

/// The cost of reading only the fields that are needed to reject the event.
void tapThatReadsFields(benchmark::State& state) {
  const auto tap =
      EventTap::create([count = state.range(0)](std::uint32_t, const TappedEvent& event) {
        benchmark::DoNotOptimize(event.integerField(dockswipe::SourceProcess));
        if (count == 1) return;
        benchmark::DoNotOptimize(event.integerField(dockswipe::EventType));
        if (count == 2) return;
        benchmark::DoNotOptimize(event.integerField(dockswipe::GestureKind));
      });
  tap->enable();
  send(state);
}
BENCHMARK(tapThatReadsFields)->DenseRange(1, 3);

void swipeWatcher(benchmark::State& state) {
  const auto watcher = SwipeWatcher::create();
  watcher->start();
  send(state);
}
BENCHMARK(swipeWatcher)->DenseRange(1, 3);

}  // namespace
}  // namespace vembrix
