#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>

#include "support/AllocationCounter.h"

namespace vembrix {

/// Reports the number of allocations per iteration between its creation and its end.
class AllocationsPerIteration {
 public:
  explicit AllocationsPerIteration(benchmark::State& state) : state_(state) {}
  ~AllocationsPerIteration() {
    state_.counters["allocations"] = benchmark::Counter(
        static_cast<double>(allocationCount() - before_), benchmark::Counter::kAvgIterations);
  }
  AllocationsPerIteration(const AllocationsPerIteration&) = delete;
  AllocationsPerIteration& operator=(const AllocationsPerIteration&) = delete;

 private:
  benchmark::State& state_;
  std::size_t before_ = allocationCount();
};

}  // namespace vembrix
