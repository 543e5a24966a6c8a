#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <iterator>

#include "platform/linux/defaults/DefaultsFileTest.h"
#include "platform/linux/defaults/XmlPropertyList.h"

namespace vembrix {
namespace {

namespace fs = std::filesystem;
using Array = PropertyList::Array;
using Data = PropertyList::Data;
using Dictionary = PropertyList::Dictionary;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

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
  // Sanitizers need descriptors of their own when they see an object for the first time.
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

}  // namespace
}  // namespace vembrix
