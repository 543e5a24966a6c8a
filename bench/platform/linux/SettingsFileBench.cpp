#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/linux/defaults/DefaultsStore.h"

namespace vembrix {
namespace {

using Dictionary = PropertyList::Dictionary;

/// The settings file of a user after some weeks; exists as long as this object.
class SettingsFile {
 public:
  SettingsFile() {
    Dictionary names;
    for (int i = 0; i < 16; ++i) names.emplace("x11-desktop-" + std::to_string(i), "Mail");
    store.set("SpaceNames", names);
    store.set("SpaceColors", PropertyList::Data(4000, 'x'));
    store.set("SignTextSize", 160.0);
    store.finish();
  }
  ~SettingsFile() { std::filesystem::remove_all(directory_); }
  SettingsFile(const SettingsFile&) = delete;
  SettingsFile& operator=(const SettingsFile&) = delete;

 private:
  static std::filesystem::path newDirectory() {
    std::string name = std::filesystem::temp_directory_path() / "vembrix-bench-XXXXXX";
    return ::mkdtemp(name.data());
  }

  std::filesystem::path directory_ = newDirectory();

 public:
  const std::filesystem::path path = directory_ / "com.vembrix.app.plist";
  DefaultsStore store{path};
};

/// The most frequent case: a setting is read from an unchanged file.
void readSetting(benchmark::State& state) {
  SettingsFile file;
  // After this time every change shows in the file's times.
  std::this_thread::sleep_for(std::chrono::milliseconds(3200));
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(file.store.object("SignTextSize"));
}
BENCHMARK(readSetting);

/// The time just after a change, when the file's contents are compared.
void readSettingAfterAChange(benchmark::State& state) {
  SettingsFile file;
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(file.store.object("SignTextSize"));
}
BENCHMARK(readSettingAfterAChange)->MinTime(0.2);

/// After a write of another program.
void reloadSettings(benchmark::State& state) {
  SettingsFile file;
  DefaultsStore other(file.path);
  double size = 0;
  for ([[maybe_unused]] auto _ : state) {
    state.PauseTiming();
    other.set("SignTextSize", size += 1);
    other.finish();
    state.ResumeTiming();
    benchmark::DoNotOptimize(file.store.object("SignTextSize"));
  }
}
BENCHMARK(reloadSettings);

/// The main thread's cost for a step of a slider.
void storeSetting(benchmark::State& state) {
  SettingsFile file;
  double size = 0;
  for ([[maybe_unused]] auto _ : state) file.store.set("SignTextSize", size += 1);
}
BENCHMARK(storeSetting);

/// The whole time until the value is on the disk.
void storeSettingAndFinish(benchmark::State& state) {
  SettingsFile file;
  double size = 0;
  for ([[maybe_unused]] auto _ : state) {
    file.store.set("SignTextSize", size += 1);
    file.store.finish();
  }
}
BENCHMARK(storeSettingAndFinish)->UseRealTime();

}  // namespace
}  // namespace vembrix
