#pragma once

#include <algorithm>
#include <array>
#include <thread>
#include <vector>

namespace vembrix {

/// Calls `check` that many times on each of four threads at once. Returns whether it was always
/// true.
template <typename Check>
bool holdsOnFourThreads(int times, const Check& check) {
  std::array<bool, 4> held{};
  std::vector<std::thread> threads;
  threads.reserve(held.size());
  for (bool& result : held) {
    threads.emplace_back([&result, &check, times] {
      result = true;
      for (int i = 0; i < times; ++i) result = result && check();
    });
  }
  for (std::thread& thread : threads) thread.join();
  return std::ranges::all_of(held, [](bool result) { return result; });
}

}  // namespace vembrix
