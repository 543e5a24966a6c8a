#include "spaces/SpaceInfo.h"

#include <gmock/gmock.h>

#include <iterator>
#include <vector>

#include "support/AllocationCounter.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kFullScreen = 4;

std::vector<SpaceInfo> spacesOf(const std::vector<std::int64_t>& types) {
  std::vector<SpaceInfo> spaces;
  spaces.reserve(types.size());
  for (const std::int64_t type : types) spaces.push_back({spaces.size() + 1, "uuid", "Main", type});
  return spaces;
}

std::vector<std::uint64_t> desktopIDs(const std::vector<std::int64_t>& types) {
  const std::vector<SpaceInfo> spaces = spacesOf(types);
  std::vector<std::uint64_t> ids;
  for (const SpaceInfo& space : DesktopView(spaces)) ids.push_back(space.spaceID);
  return ids;
}

TEST(DesktopViewTest, LeavesOutAllOtherSpacesWhereverTheyStand) {
  EXPECT_THAT(desktopIDs({0, 0, 0}), ElementsAre(1, 2, 3));
  EXPECT_THAT(desktopIDs({kFullScreen, 0, kFullScreen, kFullScreen, 0, 2, -1}), ElementsAre(2, 5));
}

TEST(DesktopViewTest, IsEmptyWithoutADesktop) {
  EXPECT_THAT(desktopIDs({}), IsEmpty());
  EXPECT_THAT(desktopIDs({kFullScreen, kFullScreen}), IsEmpty());
}

TEST(DesktopViewTest, CanBeWalkedMoreThanOnce) {
  const std::vector<SpaceInfo> spaces = spacesOf({kFullScreen, 0, 0});
  const DesktopView desktops(spaces);
  auto first = desktops.begin();
  const auto second = std::next(first);
  EXPECT_EQ((first++)->spaceID, 2U);
  EXPECT_EQ(first, second);
  EXPECT_EQ(std::ranges::distance(desktops), 2);
}

TEST(DesktopViewTest, AllocatesNothing) {
  const std::vector<SpaceInfo> spaces = spacesOf(std::vector<std::int64_t>(300, 0));
  const std::size_t before = allocationCount();
  std::uint64_t sum = 0;
  for (const SpaceInfo& space : DesktopView(spaces)) sum += space.spaceID;
  EXPECT_EQ(allocationCount(), before);
  EXPECT_EQ(sum, 300U * 301 / 2);
}

}  // namespace
}  // namespace vembrix
