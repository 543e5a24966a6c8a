#include "platform/linux/defaults/DefaultsStore.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>
#include <thread>

#include "platform/SystemLog.h"
#include "platform/linux/defaults/DefaultsWriter.h"
#include "platform/linux/defaults/XmlPropertyList.h"
#include "platform/linux/support/TemporaryDirectory.h"
#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

namespace fs = std::filesystem;
using Array = PropertyList::Array;
using Clock = std::chrono::steady_clock;
using Data = PropertyList::Data;
using Date = PropertyList::Date;
using Dictionary = PropertyList::Dictionary;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class RecordingLog : public SystemLog {
 public:
  static RecordingLog& recording() {
    static RecordingLog log;
    return log;
  }
  void write(std::string_view line) override { lines.emplace_back(line); }

  std::vector<std::string> lines;
};

/// Stores at once, unless told otherwise.
class Store : public DefaultsStore {
 public:
  using DefaultsStore::DefaultsStore;
  void set(std::string_view key, const PropertyList& value) {
    setSoon(key, value);
    finish();
  }
  void setSoon(std::string_view key, const PropertyList& value) { DefaultsStore::set(key, value); }
};

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
  /// Bytes that nobody is writing any more.
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
    const auto deadline = Clock::now() + std::chrono::seconds(10);
    while (stored() != expected && Clock::now() < deadline) {
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

// The file

TEST_F(DefaultsFileTest, DirectoriesAndFileAreForTheUserAlone) {
  const mode_t former = umask(0);
  file_.set("Key", 1);
  umask(former);
  EXPECT_EQ(modeOf(path_), 0600U);
  EXPECT_EQ(modeOf(path_.parent_path()), 0700U);
  EXPECT_EQ(modeOf(path_.parent_path().parent_path()), 0700U);
}

TEST_F(DefaultsFileTest, AFileForAllBecomesOneForTheUserAlone) {
  put(*writePropertyList(Dictionary{}));
  fs::permissions(path_, fs::perms(0644));
  file_.set("Key", 1);
  EXPECT_EQ(modeOf(path_), 0600U);
}

TEST_F(DefaultsFileTest, TheFileIsAnXmlPropertyList) {
  file_.set("Key", "value");
  EXPECT_THAT(bytes(), testing::StartsWith("<?xml"));
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", "value"}}));
}

TEST_F(DefaultsFileTest, NothingElseRemainsBesideTheFile) {
  for (int i = 0; i < 5; ++i) file_.set("Key", i);
  EXPECT_THAT(names(), ElementsAre("com.vembrix.app.plist"));
}

TEST_F(DefaultsFileTest, RemovingFromNothingMakesNoFile) {
  file_.set("Key", {});
  EXPECT_THAT(namesIn(directory_.path()), IsEmpty());
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(DefaultsFileTest, EveryWriteIsANewFile) {
  file_.set("Key", 1);
  const int reader = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC);
  const std::string former = bytes();
  file_.set("Key", "two");
  std::string read(former.size() + 100, '\0');
  read.resize(static_cast<std::size_t>(::read(reader, read.data(), read.size())));
  ::close(reader);
  EXPECT_EQ(read, former) << "who reads at that time sees the former contents as a whole";
}

TEST_F(DefaultsFileTest, AnEqualValueLeavesTheFileAlone) {
  file_.set("Key", Dictionary{{"a", Array{1, "b"}}});
  const struct stat before = statusOf(path_);
  file_.set("Key", Dictionary{{"a", Array{1, "b"}}});
  file_.set("Missing", {});
  const struct stat after = statusOf(path_);
  EXPECT_EQ(after.st_ino, before.st_ino);
  EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
  EXPECT_FALSE(fs::exists(temporary_));
}

// Reading what others write

TEST_F(DefaultsFileTest, ReadingAnUnchangedFileAllocatesNothing) {
  const PropertyList value = Dictionary{{"a", Array{1, "b"}}};
  file_.set("Key", value);
  ASSERT_EQ(file_.object("Key"), value);
  // At first it might change without a trace and is read again, later not.
  for (const auto age : {std::chrono::milliseconds(0), std::chrono::milliseconds(3200)}) {
    std::this_thread::sleep_for(age);
    ASSERT_EQ(file_.object("Key"), value);
    const std::size_t before = allocationCount();
    for (int i = 0; i < 10; ++i) {
      const PropertyList read = file_.object("Key");
      file_.set("Key", value);
      file_.set("Missing", {});
    }
    EXPECT_EQ(allocationCount(), before);
  }
  putAt(path_, *writePropertyList(Dictionary{{"Key", "changed"}}));
  EXPECT_EQ(file_.object("Key"), PropertyList("changed"));
}

TEST_F(DefaultsFileTest, WhileItIsHeldItIsLookedAtOnce) {
  put(*writePropertyList(Dictionary{{"Key", 1}}));
  file_.hold();
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  put(*writePropertyList(Dictionary{{"Key", 2}}));
  file_.hold();
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  file_.letGo();
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  file_.letGo();
  EXPECT_EQ(file_.object("Key"), PropertyList(2));
}

TEST_F(DefaultsFileTest, WhatChangedBeforeItWasHeldIsSeen) {
  put(*writePropertyList(Dictionary{{"Key", 1}}));
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  put(*writePropertyList(Dictionary{{"Key", 2}}));
  file_.hold();
  EXPECT_EQ(file_.object("Key"), PropertyList(2));
  file_.letGo();
}

TEST_F(DefaultsFileTest, AWriteWhileItIsHeldLosesNothingOfWhatOthersWrote) {
  put(*writePropertyList(Dictionary{{"Key", 1}}));
  file_.hold();
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  put(*writePropertyList(Dictionary{{"Key", 1}, {"Theirs", 2}}));
  file_.set("Key", 3);
  EXPECT_EQ(file_.object("Key"), PropertyList(3));
  file_.letGo();
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 3}, {"Theirs", 2}}));
}

TEST_F(DefaultsFileTest, AMissingFileAllocatesNothing) {
  EXPECT_TRUE(file_.object("Key").isNull());
  const std::size_t before = allocationCount();
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_EQ(allocationCount(), before);
}

TEST_F(DefaultsFileTest, ChangesInPlaceWithinOneTickAreSeen) {
  put(*writePropertyList(Dictionary{{"Key", 1000}}));
  const std::size_t digits = bytes().find("1000");
  const int writer = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC);
  for (int i = 1000; i < 3000; ++i) {
    const std::string text = std::to_string(i);
    ASSERT_EQ(::pwrite(writer, text.data(), text.size(), static_cast<off_t>(digits)), 4);
    ASSERT_EQ(file_.object("Key"), PropertyList(i));
  }
  ::close(writer);
}

TEST_F(DefaultsFileTest, AChangeWithTheFormerTimeOnItIsSeen) {
  put(*writePropertyList(Dictionary{{"Key", 1000}}));
  EXPECT_EQ(file_.object("Key"), PropertyList(1000));
  const struct stat before = statusOf(path_);
  put(*writePropertyList(Dictionary{{"Key", 2000}}));
  const timespec times[] = {before.st_atim, before.st_mtim};
  ASSERT_EQ(::utimensat(AT_FDCWD, path_.c_str(), times, 0), 0);
  EXPECT_EQ(file_.object("Key"), PropertyList(2000));
}

TEST_F(DefaultsFileTest, WhatIsNotUnderstoodSurvivesAWrite) {
  const std::string bad =
      "<key>bad</key><real>1e400</real><!-- kept --><key>odd</key><Strin>a</Strin>"
      "<key>large</key><integer>18446744073709551615</integer>"
      "<key>date</key><date>2026-01-02T03:04:05.678901Z</date>";
  put("<plist version=\"1.0\"><dict>" + bad + "</dict></plist>");
  EXPECT_TRUE(file_.object("bad").isNull());
  EXPECT_TRUE(file_.object("odd").isNull());
  file_.set("Key", 1);
  file_.set("Key", {});
  EXPECT_EQ(bytes(), "<plist version=\"1.0\"><dict>" + bad + "</dict></plist>");
  file_.set("bad", 2);
  EXPECT_EQ(file_.object("bad"), PropertyList(2));
  EXPECT_THAT(lines(), IsEmpty());
}

// What counts when

TEST_F(DefaultsFileTest, AValueCountsAtOnceAndReachesTheFileSoon) {
  const auto start = Clock::now();
  for (int i = 0; i <= 50; ++i) {
    file_.setSoon("Key", i);
    file_.setSoon("Gone", i);
    file_.setSoon("Gone", {});
    EXPECT_EQ(file_.object("Key"), PropertyList(i));
    EXPECT_TRUE(file_.object("Gone").isNull());
  }
  if (Clock::now() - start < std::chrono::milliseconds(300)) {
    EXPECT_FALSE(fs::exists(path_)) << "gathered";
  }
  EXPECT_TRUE(isStoredSoon(Dictionary{{"Key", 50}}));
}

TEST_F(DefaultsFileTest, WhatIsLeftIsStoredAtTheEnd) {
  {
    Store ending(path_);
    ending.setSoon("Key", 1);
    ending.setSoon("Key", 2);
  }
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 2}}));
}

TEST_F(DefaultsFileTest, ANewerValueOfAnotherProgramWins) {
  put(*writePropertyList(Dictionary{{"Key", 1}}));
  file_.setSoon("Key", 2);
  file_.setSoon("Ours", 2);
  put(*writePropertyList(Dictionary{{"Key", 3}}));
  EXPECT_EQ(file_.object("Key"), PropertyList(3));
  EXPECT_EQ(file_.object("Ours"), PropertyList(2));
  file_.finish();
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 3}, {"Ours", 2}}));
}

TEST_F(DefaultsFileTest, AnotherProgramsCopyOfTheFormerValueDoesNotWin) {
  put(*writePropertyList(Dictionary{{"Key", 1}}));
  file_.setSoon("Key", 2);
  put(*writePropertyList(Dictionary{{"Key", 1}, {"Theirs", 3}}));
  EXPECT_EQ(file_.object("Key"), PropertyList(2));
  file_.finish();
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 2}, {"Theirs", 3}}));
}

TEST_F(DefaultsFileTest, WhileItIsHeldOurOwnWriteIsSeen) {
  put(*writePropertyList(Dictionary{{"Key", 1}}));
  file_.hold();
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  file_.set("Key", 2);
  EXPECT_EQ(file_.object("Key"), PropertyList(2));
  file_.letGo();
}

// A file that another program is writing

TEST_F(DefaultsFileTest, WhatWasReadStandsWhileAnotherProgramWrites) {
  const std::string whole = *writePropertyList(Dictionary{{"Key", 2}});
  put(*writePropertyList(Dictionary{{"Key", 1}}));
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  for (const std::size_t length : {std::size_t{0}, std::size_t{10}, whole.size() - 10}) {
    put(whole.substr(0, length));
    EXPECT_EQ(file_.object("Key"), PropertyList(1));
  }
  put(whole);
  EXPECT_EQ(file_.object("Key"), PropertyList(2));
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(DefaultsFileTest, AStoreWaitsForAnotherProgramThatWrites) {
  put("");
  std::thread other([this] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    put(*writePropertyList(Dictionary{{"Theirs", 2}}));
  });
  file_.setSoon("Ours", 1);
  file_.finish();
  other.join();
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Ours", 1}, {"Theirs", 2}}));
  EXPECT_THAT(names(), SizeIs(1));
}

TEST_F(DefaultsFileTest, TheFirstReadingWaitsForAnotherProgramThatWrites) {
  put("");
  std::thread other([this] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    put(*writePropertyList(Dictionary{{"Key", 1}}));
  });
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  other.join();
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(DefaultsFileTest, AFileThatStaysCutOffIsDamaged) {
  put("<plist><dict>");
  EXPECT_TRUE(file_.object("Key").isNull());
  std::this_thread::sleep_for(std::chrono::milliseconds(1100));
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_THAT(lines(), ElementsAre(HasSubstr("no property list")));
}

TEST_F(DefaultsFileTest, ABinaryFileIsLeftAlone) {
  put("bplist00 whatever");
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_THAT(lines(), ElementsAre(HasSubstr("plutil -convert xml1")));
  file_.set("Key", 1);
  EXPECT_EQ(file_.object("Key"), PropertyList(1)) << "in this process";
  EXPECT_EQ(bytes(), "bplist00 whatever");
  EXPECT_THAT(names(), SizeIs(1));
  put(*writePropertyList(Dictionary{{"Theirs", 2}}));
  file_.finish();
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 1}, {"Theirs", 2}})) << "once converted";
}

TEST_F(DefaultsFileTest, NothingIsWrittenThatCouldNotBeReadAgain) {
  const PropertyList theirs = std::string(kPropertyListLimit - 1000, 'x');
  put(*writePropertyList(Dictionary{{"Theirs", theirs}}));
  const std::string before = bytes();
  file_.set("Huge", std::string(kPropertyListLimit, 'x'));
  EXPECT_THAT(lines(), ElementsAre(HasSubstr("Huge")));
  for (int i = 0; i < 3; ++i) file_.set("Large", std::string(2000, 'x'));
  EXPECT_THAT(lines(), ElementsAre(HasSubstr("Huge"), HasSubstr("Large"))) << "each once";
  EXPECT_TRUE(bytes() == before);
  file_.set("Small", 1);
  EXPECT_EQ(file_.object("Small"), PropertyList(1));
  EXPECT_TRUE(file_.object("Theirs") == theirs);
}

// What cannot be read

TEST_F(DefaultsFileTest, ADamagedFileIsLoggedOnceAndEmpty) {
  putOld("no property list");
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(file_.object("Key").isNull());
  ASSERT_THAT(lines(), SizeIs(1));
  EXPECT_THAT(lines().front(), testing::StartsWith("[Vembrix] "));
  EXPECT_THAT(lines().front(), HasSubstr(path_.string()));
  EXPECT_EQ(bytes(), "no property list") << "reading changes nothing";
  putOld("no property list");
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_THAT(lines(), SizeIs(1)) << "the same again";
  putOld("another one");
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_THAT(lines(), SizeIs(2));
}

TEST_F(DefaultsFileTest, ADamagedFileIsKeptBesideBeforeAnythingIsWritten) {
  for (const char* damage : {"first", "second", "third"}) {
    putOld(damage);
    file_.set("Key", damage);
    EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", damage}}));
  }
  EXPECT_EQ(bytesAt(path_.string() + ".damaged"), "first");
  EXPECT_EQ(bytesAt(path_.string() + ".damaged.2"), "second");
  EXPECT_EQ(bytesAt(path_.string() + ".damaged.3"), "third");
  EXPECT_THAT(names(), SizeIs(4));
  EXPECT_THAT(lines(), SizeIs(3));
}

TEST_F(DefaultsFileTest, AFileWithoutADictionaryAtItsTopIsDamaged) {
  for (const PropertyList& top : {PropertyList(Array{"Key", 1}), PropertyList("Key")}) {
    put(*writePropertyList(top));
    EXPECT_TRUE(file_.object("Key").isNull());
  }
  EXPECT_THAT(lines(), ElementsAre(HasSubstr("no dictionary"), HasSubstr("no dictionary")));
  file_.set("Key", 1);
  EXPECT_EQ(bytesAt(path_.string() + ".damaged"), *writePropertyList("Key"));
}

TEST_F(DefaultsFileTest, AnEmptyFileIsDamaged) {
  putOld("");
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_THAT(lines(), SizeIs(1));
  file_.set("Key", 1);
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
}

TEST_F(DefaultsFileTest, AHugeFileIsNotReadButKept) {
  put("");
  fs::resize_file(path_, std::uintmax_t{65} << 20);
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_THAT(lines(), SizeIs(1));
  file_.set("Key", 1);
  EXPECT_EQ(fs::file_size(path_.string() + ".damaged"), std::uintmax_t{65} << 20);
}

TEST_F(DefaultsFileTest, ADirectoryInThePlaceOfTheFileIsKeptBeside) {
  putAt(path_ / "inside", "kept");
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_THAT(lines(), SizeIs(1));
  file_.set("Key", 1);
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  EXPECT_EQ(bytesAt(fs::path(path_.string() + ".damaged") / "inside"), "kept");
  EXPECT_THAT(lines(), SizeIs(1));
}

TEST_F(DefaultsFileTest, APipeInThePlaceOfTheFileHoldsNobodyUp) {
  fs::create_directories(path_.parent_path());
  ASSERT_EQ(::mkfifo(path_.c_str(), 0600), 0);
  EXPECT_TRUE(file_.object("Key").isNull());
  file_.set("Key", 1);
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
}

TEST_F(DefaultsFileTest, AFileThatCannotBeOpenedForNowIsNotLost) {
  put(*writePropertyList(Dictionary{{"Key", 1}}));
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  // Sanitizers need descriptors of their own where an object is met for the first time.
  const fs::path folder = directory_.path() / "folder.plist";
  fs::create_directories(folder);
  Store unreadable(folder);
  EXPECT_TRUE(unreadable.object("Key").isNull());
  unreadable.set("Key", 2);
  const std::size_t linesBefore = lines().size();
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
  const rlimit none{0, limit.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
  EXPECT_EQ(file_.object("Key"), PropertyList(1)) << "what was read stands";
  file_.set("Key", 2);
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
  std::vector<std::string> added = lines();
  added.erase(added.begin(), added.begin() + static_cast<std::ptrdiff_t>(linesBefore));
  EXPECT_THAT(added, ElementsAre(HasSubstr("cannot read"), HasSubstr("cannot write")));
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 1}}));
  file_.finish();
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", 2}}));
  EXPECT_THAT(names(), SizeIs(1));
}

TEST_F(DefaultsFileTest, AnotherApplicationsFileIsNobodysBusiness) {
  putOld("no property list");
  DefaultsFile silent(path_, DefaultsFile::Log::Nothing);
  EXPECT_TRUE(silent.object("Key").isNull());
  EXPECT_THAT(lines(), IsEmpty());
}

// Links

TEST_F(DefaultsFileTest, ALinkStaysOneAndItsTargetIsReplaced) {
  const fs::path target = directory_.path() / "dotfiles" / "vembrix.plist";
  putAt(target, *writePropertyList(Dictionary{{"Theirs", 1}}));
  fs::create_directories(path_.parent_path());
  fs::create_symlink("../../dotfiles/middle", path_);
  fs::create_symlink(target, target.parent_path() / "middle");
  file_.set("Ours", 2);
  EXPECT_TRUE(fs::is_symlink(path_));
  EXPECT_FALSE(fs::is_symlink(target));
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Theirs", 1}, {"Ours", 2}}));
  EXPECT_EQ(file_.object("Ours"), PropertyList(2));
  EXPECT_THAT(namesIn(target.parent_path()), UnorderedElementsAre("middle", "vembrix.plist"));
  EXPECT_THAT(names(), SizeIs(1));
}

TEST_F(DefaultsFileTest, ALinkToNothingGetsItsTarget) {
  const fs::path target = directory_.path() / "target.plist";
  fs::create_directories(path_.parent_path());
  fs::create_symlink(target, path_);
  EXPECT_TRUE(file_.object("Key").isNull());
  file_.set("Key", 1);
  EXPECT_TRUE(fs::is_symlink(path_));
  EXPECT_EQ(bytesAt(target), bytes());
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(DefaultsFileTest, ALinkToItselfIsKeptBeside) {
  fs::create_directories(path_.parent_path());
  fs::create_symlink(path_, path_);
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_THAT(lines(), SizeIs(1));
  file_.set("Key", 1);
  EXPECT_EQ(file_.object("Key"), PropertyList(1));
  EXPECT_TRUE(fs::is_symlink(path_.string() + ".damaged"));
}

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

/// As a run that was killed before the disk had what it wrote.
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

// Writes that fail

TEST_F(DefaultsFileTest, AFailureIsLoggedOnceAndTriedAgain) {
  file_.set("Key", "former");
  fs::create_directory(temporary_);
  file_.set("Key", "new");
  file_.set("Key", "newer");
  file_.set("Other", 1);
  EXPECT_THAT(lines(), ElementsAre(HasSubstr("cannot write")));
  EXPECT_EQ(file_.object("Key"), PropertyList("newer")) << "in this process";
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", "former"}}));
  fs::remove(temporary_);
  EXPECT_TRUE(isStoredSoon(Dictionary{{"Key", "newer"}, {"Other", 1}})) << "by itself";
  fs::create_directory(temporary_);
  file_.set("Key", "newest");
  EXPECT_THAT(lines(), SizeIs(2)) << "another failure than the first";
}

TEST_F(DefaultsFileTest, AFullDiskLosesNothing) {
  file_.set("Key", "former");
  const std::string former = bytes();
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit small{4096, limit.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  file_.set("Large", Data(100000, 1));
  file_.set("Large", Data(200000, 1));
  EXPECT_EQ(bytes(), former);
  EXPECT_THAT(names(), SizeIs(1)) << "what was written of it is gone";
  EXPECT_THAT(lines(), ElementsAre(HasSubstr("cannot write")));
  file_.set("Large", {});
  file_.set("Key", "small enough");
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", "small enough"}}));
  file_.set("Large", Data(100000, 1));
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  file_.finish();
  EXPECT_TRUE(stored()["Large"] == PropertyList(Data(100000, 1)));
}

TEST_F(DefaultsFileTest, WhereNoDirectoryCanBeMadeNothingIsStored) {
  putAt(directory_.path() / "config", "a file");
  EXPECT_TRUE(file_.object("Key").isNull());
  EXPECT_THAT(lines(), IsEmpty()) << "it is missing, no more";
  file_.set("Key", 1);
  EXPECT_EQ(file_.object("Key"), PropertyList(1)) << "in this process";
  EXPECT_THAT(lines(), ElementsAre(HasSubstr("cannot write")));
}

TEST_F(DefaultsFileTest, AValueThatIsNoPropertyListIsLoggedAndLost) {
  file_.set("Key", "kept");
  file_.set("Key", Array{PropertyList()});
  EXPECT_THAT(lines(), ElementsAre(HasSubstr("Key")));
  EXPECT_EQ(stored(), PropertyList(Dictionary{{"Key", "kept"}}));
}

// Other writers

/// Another process that has begun to write, as far as locks can tell.
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

/// Keeps all who wait for the disk waiting.
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

// In the place of the system's.
extern "C" int fsync(int descriptor) {
  while (BusyDisk::isBusy()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

SystemLog& SystemLog::shared() {
  return RecordingLog::recording();
}

}  // namespace vembrix
