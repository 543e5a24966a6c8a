#include "platform/embedded/services/EmbeddedBackgroundWork.h"

#include <thread>
#include <utility>

namespace vembrix {

EmbeddedBackgroundWork& EmbeddedBackgroundWork::shared() {
  static EmbeddedBackgroundWork work;
  return work;
}

void EmbeddedBackgroundWork::run() {
  std::vector<std::thread> threads;
  for (auto& block : std::exchange(waiting_, {})) threads.emplace_back(std::move(block));
  for (std::thread& thread : threads) thread.join();
}

}  // namespace vembrix
