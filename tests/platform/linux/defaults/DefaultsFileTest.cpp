#include "platform/linux/defaults/DefaultsFileTest.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <iterator>
#include <thread>

#include "platform/SystemLog.h"
#include "platform/linux/defaults/XmlPropertyList.h"
#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

namespace fs = std::filesystem;
using Array = PropertyList::Array;
using Clock = std::chrono::steady_clock;
using Dictionary = PropertyList::Dictionary;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

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
  // A new file might change without a trace and is read again; an old one is not.
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

}  // namespace

// Replaces the system's log.
SystemLog& SystemLog::shared() {
  return RecordingLog::recording();
}

}  // namespace vembrix
