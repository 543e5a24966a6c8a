#import "platform/macos/support/CFOwned.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <type_traits>

namespace vembrix {
namespace {

using Owned = CFOwned<CFMutableArrayRef>;

static_assert(!std::is_copy_constructible_v<Owned> && !std::is_copy_assignable_v<Owned>);
static_assert(std::is_nothrow_move_constructible_v<Owned>);

class CFOwnedTest : public testing::Test {
 protected:
  ~CFOwnedTest() override { CFRelease(object_); }

  /// The number of references besides the test's own.
  CFIndex others() const { return CFGetRetainCount(object_) - 1; }
  /// Returns an object as a call with Create or Copy in its name does.
  CFMutableArrayRef created() const {
    CFRetain(object_);
    return object_;
  }

  CFMutableArrayRef const object_ =
      CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
};

TEST_F(CFOwnedTest, AnAdoptedReferenceIsReleased) {
  {
    const auto owned = Owned::adopt(created());
    EXPECT_EQ(owned.get(), object_);
    EXPECT_TRUE(owned);
    EXPECT_EQ(others(), 1);
  }
  EXPECT_EQ(others(), 0);
}

TEST_F(CFOwnedTest, ARetainedObjectStaysItsOwners) {
  {
    const auto owned = Owned::retain(object_);
    EXPECT_EQ(others(), 1);
  }
  EXPECT_EQ(others(), 0);
}

TEST_F(CFOwnedTest, MayBeEmpty) {
  Owned owned;
  EXPECT_FALSE(owned);
  EXPECT_FALSE(Owned::adopt(nullptr));
  EXPECT_FALSE(Owned::retain(nullptr));
  owned = Owned::adopt(nullptr);
  EXPECT_EQ(owned.get(), nullptr);
}

TEST_F(CFOwnedTest, MovesItsReference) {
  auto first = Owned::adopt(created());
  auto second = std::move(first);
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(second.get(), object_);
  EXPECT_EQ(others(), 1);
}

TEST_F(CFOwnedTest, AssignmentReleasesWhatItReplaces) {
  auto owned = Owned::adopt(created());
  owned = Owned::adopt(CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks));
  EXPECT_EQ(others(), 0);
  EXPECT_NE(owned.get(), object_);
  owned = Owned::retain(object_);
  EXPECT_EQ(others(), 1);
  owned = {};
  EXPECT_EQ(others(), 0);
}

TEST_F(CFOwnedTest, ManyReferencesToOneObjectAreCountedEach) {
  {
    std::array<std::optional<Owned>, 100> all;
    for (auto& owned : all) owned.emplace(Owned::retain(object_));
    EXPECT_EQ(others(), 100);
  }
  EXPECT_EQ(others(), 0);
}

}  // namespace
}  // namespace vembrix
