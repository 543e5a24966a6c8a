#pragma once

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/SystemLog.h"
#include "platform/linux/defaults/DefaultsStore.h"
#include "platform/linux/defaults/XmlPropertyList.h"
#include "platform/linux/support/TemporaryDirectory.h"

namespace vembrix {

namespace fs = std::filesystem;

/// The log that the stores of these tests write to.
class RecordingLog : public SystemLog {
 public:
  static RecordingLog& recording() {
    static RecordingLog log;
    return log;
  }
  void write(std::string_view line) override { lines.emplace_back(line); }

  std::vector<std::string> lines;
};

/// A store whose set() returns after the file is written.
class Store : public DefaultsStore {
 public:
  using DefaultsStore::DefaultsStore;
  void set(std::string_view key, const PropertyList& value) {
    setSoon(key, value);
    finish();
  }
  void setSoon(std::string_view key, const PropertyList& value) { DefaultsStore::set(key, value); }
};

/// A settings file in a folder of its own.
class DefaultsFileTest : public testing::Test {
 protected:
  DefaultsFileTest() { log_.lines.clear(); }

  void put(std::string_view bytes) { putAt(path_, bytes); }
  static void putAt(const fs::path& path, std::string_view bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
  }
  std::string bytes() const { return bytesAt(path_); }
  static std::string bytesAt(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// Writes bytes with the date of a finished file.
  void putOld(std::string_view bytes) {
    put(bytes);
    fs::last_write_time(path_, fs::file_time_type::clock::now() - std::chrono::seconds(10));
  }
  PropertyList stored() const {
    const auto read = readPropertyList(bytes());
    const auto* value = std::get_if<PropertyList>(&read);
    return value ? *value : PropertyList();
  }
  bool isStoredSoon(const PropertyList& expected) const {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (stored() != expected && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return stored() == expected;
  }

  std::vector<std::string> names() const { return namesIn(path_.parent_path()); }
  static std::vector<std::string> namesIn(const fs::path& directory) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  static struct stat statusOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status;
  }
  static mode_t modeOf(const fs::path& path) { return statusOf(path).st_mode & 07777; }

  const std::vector<std::string>& lines() const { return log_.lines; }

  TemporaryDirectory directory_;
  fs::path path_ = directory_.path() / "config" / "vembrix" / "com.vembrix.app.plist";
  fs::path temporary_ = path_.parent_path() / ".com.vembrix.app.plist.tmp";
  RecordingLog& log_ = RecordingLog::recording();
  Store file_{path_};
};

}  // namespace vembrix
