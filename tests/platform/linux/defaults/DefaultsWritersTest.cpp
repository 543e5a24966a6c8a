#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "platform/linux/defaults/DefaultsFileTest.h"
#include "platform/linux/defaults/DefaultsWriter.h"
#include "platform/linux/defaults/XmlPropertyList.h"

namespace vembrix {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Dictionary = PropertyList::Dictionary;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// The temporary file

TEST_F(DefaultsFileTest, ATemporaryThatWasLeftBehindIsTakenOver) {
  putAt(temporary_, std::string(100000, 'x'));
  file_.set("Key", 1);
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 1}}));
  EXPECT_FALSE(fs::exists(temporary_));
  EXPECT_EQ(modeOf(path_), 0600U);
}

TEST_F(DefaultsFileTest, ATemporaryThatIsALinkIsNotFollowed) {
  file_.set("Key", 1);
  const fs::path other = directory_.write("other", "kept");
  fs::create_symlink(other, temporary_);
  file_.set("Key", 2);
  EXPECT_EQ(bytesAt(other), "kept");
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 1}}));
  EXPECT_THAT(lines(), SizeIs(1));
}

TEST_F(DefaultsFileTest, ATemporaryThatIsAlsoAnotherFileLeavesThatAlone) {
  const fs::path other = directory_.write("other", "kept");
  fs::create_directories(path_.parent_path());
  fs::create_hard_link(other, temporary_);
  file_.set("Key", 1);
  EXPECT_EQ(bytesAt(other), "kept");
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 1}}));
}

/// Leaves files like a run that was killed before the disk had its bytes.
class FormerRunTest : public DefaultsFileTest {
 protected:
  void leave(std::string_view bytes) {
    // Longer than a tick of the file system's clock.
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    putAt(temporary_, bytes);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  void leaveValue(int value) { leave(*writePropertyList(Dictionary{{"Key", value}})); }
  PropertyList valueOfNextRun() { return Store(path_).object("Key"); }
};

TEST_F(FormerRunTest, WhatItWasAboutToStoreIsStored) {
  file_.set("Key", 1);
  leaveValue(2);
  EXPECT_EQ(valueOfNextRun(), PropertyList(2));
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 2}}));
  EXPECT_THAT(names(), SizeIs(1));
}

TEST_F(FormerRunTest, ItsFirstStoreIsStored) {
  leaveValue(1);
  EXPECT_EQ(valueOfNextRun(), PropertyList(1));
}

TEST_F(FormerRunTest, WhatItHadNotFinishedIsForgotten) {
  file_.set("Key", 1);
  const std::string all = *writePropertyList(Dictionary{{"Key", 2}});
  for (const std::string& part : {std::string(), all.substr(0, all.size() / 2)}) {
    leave(part);
    EXPECT_EQ(valueOfNextRun(), PropertyList(1));
    EXPECT_THAT(names(), SizeIs(1));
  }
}

TEST_F(FormerRunTest, WhatAnotherProgramHasWrittenSinceIsNewer) {
  leaveValue(2);
  put(*writePropertyList(Dictionary{{"Key", 3}}));
  EXPECT_EQ(valueOfNextRun(), PropertyList(3));
  EXPECT_THAT(names(), SizeIs(1));
}

TEST_F(FormerRunTest, ADamagedFileIsNotReplacedByIt) {
  putOld("damaged");
  leaveValue(2);
  Store(path_).set("Other", 1);
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Other", 1}}));
  EXPECT_EQ(bytesAt(path_.string() + ".damaged"), "damaged");
}

// Other writers

/// Another process that has begun to write, as far as locks can show.
class OtherWriter {
 public:
  explicit OtherWriter(const fs::path& temporary)
      : descriptor_(::open(temporary.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    EXPECT_EQ(::flock(descriptor_, LOCK_EX | LOCK_NB), 0);
  }
  ~OtherWriter() { ::close(descriptor_); }
  OtherWriter(const OtherWriter&) = delete;
  OtherWriter& operator=(const OtherWriter&) = delete;

 private:
  int descriptor_;
};

TEST_F(DefaultsFileTest, ItWaitsForAnotherWriter) {
  file_.set("Key", 1);
  auto other = std::make_unique<OtherWriter>(temporary_);
  std::thread release([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    other.reset();
  });
  file_.set("Key", 2);
  release.join();
  EXPECT_EQ(file_.object("Key"), PropertyList(2));
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(DefaultsFileTest, NobodyWaitsForAnotherWriter) {
  file_.set("Key", 1);
  {
    const OtherWriter other(temporary_);
    auto start = Clock::now();
    file_.setSoon("Key", 2);
    EXPECT_EQ(file_.object("Key"), PropertyList(2));
    EXPECT_LT(Clock::now() - start, std::chrono::milliseconds(500));
    file_.finish();
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(8)) << "not even the end of the process";
    EXPECT_THAT(lines(), ElementsAre(HasSubstr("cannot write")));
    EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 1}}));
    EXPECT_TRUE(fs::exists(temporary_)) << "it is the other's";
  }
  file_.finish();
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 2}}));
}

TEST_F(FormerRunTest, AWriterThatLivesFinishesByItself) {
  file_.set("Key", 1);
  leaveValue(2);
  const OtherWriter other(temporary_);
  EXPECT_EQ(valueOfNextRun(), PropertyList(1));
  EXPECT_TRUE(fs::exists(temporary_));
}

/// Blocks everything that waits for the disk.
class BusyDisk {
 public:
  BusyDisk() { isBusy() = true; }
  ~BusyDisk() { isBusy() = false; }
  BusyDisk(const BusyDisk&) = delete;
  BusyDisk& operator=(const BusyDisk&) = delete;

  static std::atomic<bool>& isBusy() {
    static std::atomic<bool> busy = false;
    return busy;
  }
};

TEST_F(FormerRunTest, NoChangeWaitsForAnotherOnesDisk) {
  const auto isWrittenSoon = [this](const PropertyList& expected) {
    const auto deadline = Clock::now() + std::chrono::seconds(10);
    while (Clock::now() < deadline) {
      const auto read = readPropertyList(bytesAt(temporary_));
      if (const auto* value = std::get_if<PropertyList>(&read); value && *value == expected) {
        return true;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
  };
  {
    const BusyDisk busy;
    file_.setSoon("Key", 1);
    EXPECT_TRUE(isWrittenSoon(Dictionary{{"Key", 1}}));
    file_.setSoon("Other", 2);
    EXPECT_TRUE(isWrittenSoon(Dictionary{{"Key", 1}, {"Other", 2}}));
    file_.setSoon("Key", {});
    EXPECT_TRUE(isWrittenSoon(Dictionary{{"Other", 2}}));
    EXPECT_FALSE(fs::exists(path_));
  }
  file_.finish();
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Other", 2}}));
  EXPECT_THAT(names(), SizeIs(1));
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(FormerRunTest, WhatIsTakenBackBeforeItIsOnTheDiskMakesNoFile) {
  {
    const BusyDisk busy;
    file_.setSoon("Key", 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(600));
    file_.setSoon("Key", {});
    std::this_thread::sleep_for(std::chrono::milliseconds(600));
  }
  file_.finish();
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(DefaultsFileTest, WhatWasReadBeforeOurOwnWriteIsNotComparedWithIt) {
  DefaultsWriter writer(path_);
  const int before = writer.writeCount();
  ASSERT_TRUE(writer.set("Key", 1, PropertyList(), before));
  writer.finish();
  EXPECT_FALSE(writer.set("Key", 2, PropertyList(), before));
  ASSERT_TRUE(writer.set("Key", 2, PropertyList(1), writer.writeCount()));
  writer.finish();
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 2}}));
}

TEST_F(DefaultsFileTest, WritersAtOneTimeLoseNoKey) {
  constexpr int kWriters = 4;
  constexpr int kKeys = 50;
  std::vector<std::thread> writers;
  writers.reserve(kWriters);
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.emplace_back([this, writer] {
      Store file(path_);
      for (int i = 0; i < kKeys; ++i) file.set(std::to_string(writer * kKeys + i), i);
    });
  }
  for (std::thread& writer : writers) writer.join();
  EXPECT_THAT(*stored().asDictionary(), SizeIs(kWriters * kKeys));
  EXPECT_THAT(names(), SizeIs(1));
}

TEST_F(DefaultsFileTest, AWriteBetweenReadingAndWritingIsKept) {
  file_.set("Ours", 1);
  {
    Store other(path_);
    other.set("Theirs", 2);
  }
  file_.set("Ours", 3);
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Ours", 3}, {"Theirs", 2}}));
}

}  // namespace

// Replaces the system's function.
extern "C" int fsync(int descriptor) {
  while (BusyDisk::isBusy()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

}  // namespace vembrix
