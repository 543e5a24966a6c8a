#include "platform/embedded/desktop/TestDesktop.h"

#include <gmock/gmock.h>

#include "platform/NotificationCenter.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using SpaceType = EmbeddedDesktop::SpaceType;

class EmbeddedDesktopTest : public testing::Test {
 protected:
  Observation count(NotificationCenter& center, std::string_view name, int& posts) {
    return center.addObserver(name, [&posts] { posts += 1; });
  }

  TestDesktop& desktop_ = TestDesktop::shared();
  int switches_ = 0;
  Observation switchObservation_ =
      count(NotificationCenter::workspace(), notification::kActiveSpaceDidChange, switches_);
};

TEST_F(EmbeddedDesktopTest, StartsWithOneDisplayAndFourDesktops) {
  EXPECT_EQ(desktop_.spaceIDs().size(), 4U);
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(0));
  EXPECT_EQ(desktop_.screens().all().size(), 1U);
  EXPECT_EQ(desktop_.screens().mainScreen()->frame, (Rect{0, 0, 1440, 900}));
}

TEST_F(EmbeddedDesktopTest, GoingToASpaceIsAnnouncedOnce) {
  desktop_.activate(desktop_.spaceAt(1));
  desktop_.activate(desktop_.spaceAt(1));
  desktop_.activate(12345);
  EXPECT_EQ(switches_, 1);
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(1));
}

TEST_F(EmbeddedDesktopTest, SpacesComeAndGoSilentlyWhileTheActiveOneStays) {
  desktop_.addSpace("Main");
  desktop_.removeSpace(desktop_.spaceAt(2));
  desktop_.moveSpace(desktop_.spaceAt(0), 2);
  EXPECT_EQ(switches_, 0);
  desktop_.setAnnouncesSpaces(true);
  desktop_.addSpace("Main");
  EXPECT_EQ(switches_, 1);
}

TEST_F(EmbeddedDesktopTest, RemovingTheActiveSpaceGoesToItsNeighbour) {
  desktop_.activate(desktop_.spaceAt(2));
  const auto left = desktop_.spaceAt(1);
  desktop_.removeSpace(desktop_.spaceAt(2));
  EXPECT_EQ(desktop_.activeSpace(), left);
  EXPECT_EQ(switches_, 2);
}

TEST_F(EmbeddedDesktopTest, TheLastSpaceOfADisplayStays) {
  desktop_.setSpaceCount(1);
  desktop_.removeSpace(desktop_.spaceAt(0));
  EXPECT_EQ(desktop_.spaceIDs().size(), 1U);
}

TEST_F(EmbeddedDesktopTest, EachDisplayHasACurrentSpaceAndOneDisplayIsActive) {
  int screenChanges = 0;
  const Observation observation = count(NotificationCenter::defaultCenter(),
                                        notification::kScreenParametersDidChange, screenChanges);
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 1920, 1080}, .scale = 2});
  const auto onSecond = desktop_.addSpace("Second");
  EXPECT_EQ(screenChanges, 1);
  desktop_.activate(onSecond);
  EXPECT_EQ(desktop_.activeSpace(), onSecond);
  EXPECT_EQ(desktop_.screens().mainScreen()->scale, 2);
  desktop_.windowServer().CGSManagedDisplaySetCurrentSpace(1, "Main", desktop_.spaceAt(3));
  EXPECT_EQ(desktop_.activeSpace(), onSecond) << "the other display switched";
  desktop_.removeDisplay("Second");
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(3));
  EXPECT_EQ(screenChanges, 2);
}

TEST_F(EmbeddedDesktopTest, ASpaceOfAnotherDisplayIsNotMadeCurrent) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 0, 1920, 1080}});
  desktop_.windowServer().CGSManagedDisplaySetCurrentSpace(1, "Second", desktop_.spaceAt(1));
  EXPECT_EQ(desktop_.activeSpace(), desktop_.spaceAt(0));
  EXPECT_EQ(switches_, 0);
}

TEST_F(EmbeddedDesktopTest, TheWindowServerTellsTheTypesOfSpaces) {
  desktop_.setSpaceCount(1);
  desktop_.addSpace("Main", SpaceType::FullScreen, "full");
  const PropertyList answer = desktop_.windowServer().CGSCopyManagedDisplaySpaces(1);
  ASSERT_NE(answer.asArray(), nullptr);
  const PropertyList& spaces = answer.asArray()->at(0)["Spaces"];
  EXPECT_EQ(spaces.asArray()->at(0)["type"], PropertyList(0));
  EXPECT_EQ(spaces.asArray()->at(1)["type"], PropertyList(4));
  EXPECT_EQ(spaces.asArray()->at(1)["uuid"], PropertyList("full"));
}

TEST_F(EmbeddedDesktopTest, AnswersCanBePutInAndTakenOutAgain) {
  WindowServer& server = desktop_.windowServer();
  const PropertyList truth = server.CGSCopyManagedDisplaySpaces(1);
  desktop_.overrideManagedDisplaySpaces("nonsense");
  desktop_.overrideActiveSpace(77);
  EXPECT_EQ(server.CGSCopyManagedDisplaySpaces(1), PropertyList("nonsense"));
  EXPECT_EQ(server.CGSGetActiveSpace(1), 77U);
  desktop_.overrideManagedDisplaySpaces(std::nullopt);
  desktop_.overrideActiveSpace(std::nullopt);
  EXPECT_EQ(server.CGSCopyManagedDisplaySpaces(1), truth);
  EXPECT_EQ(server.CGSGetActiveSpace(1), desktop_.spaceAt(0));
}

TEST_F(EmbeddedDesktopTest, WakingIsAnnounced) {
  int wakes = 0;
  const Observation observation =
      count(NotificationCenter::workspace(), notification::kDidWake, wakes);
  desktop_.wake();
  EXPECT_EQ(wakes, 1);
}

TEST_F(EmbeddedDesktopTest, PermissionCanBeGivenAndTaken) {
  Accessibility& accessibility = desktop_.accessibility();
  EXPECT_TRUE(accessibility.isProcessTrusted(Accessibility::Prompt::Yes));
  desktop_.setTrusted(false);
  EXPECT_FALSE(accessibility.isProcessTrusted(Accessibility::Prompt::No));
  EXPECT_EQ(desktop_.promptCount(), 0);
  EXPECT_FALSE(accessibility.isProcessTrusted(Accessibility::Prompt::Yes));
  EXPECT_EQ(desktop_.promptCount(), 1);
}

TEST(EmbeddedMainQueueTest, ABlockSeesTheClockAtTheMomentItIsDue) {
  EmbeddedMainQueue queue;
  std::vector<std::int64_t> times;
  const auto note = [&] {
    times.push_back(std::chrono::duration_cast<std::chrono::milliseconds>(queue.now()).count());
  };
  queue.after(std::chrono::milliseconds(162), note);
  queue.after(std::chrono::milliseconds(18), [&] {
    note();
    queue.after(std::chrono::milliseconds(18), note);
  });
  queue.advance(std::chrono::milliseconds(161));
  EXPECT_THAT(times, ElementsAre(18, 36));
  queue.advance(std::chrono::milliseconds(1));
  EXPECT_THAT(times, ElementsAre(18, 36, 162));
}

TEST(EmbeddedMainQueueTest, BeatsThatWereSleptThroughAreOne) {
  EmbeddedMainQueue queue;
  int beats = 0;
  const TimerSource timer = queue.repeat(std::chrono::milliseconds(500),
                                         std::chrono::milliseconds(500), [&] { beats += 1; });
  queue.sleep(std::chrono::milliseconds(5200));
  queue.runPending();
  EXPECT_EQ(beats, 1);
  queue.advance(std::chrono::milliseconds(299));
  EXPECT_EQ(beats, 1);
  queue.advance(std::chrono::milliseconds(1));
  EXPECT_EQ(beats, 2) << "the beat keeps its grid";
}

TEST(EmbeddedMainQueueTest, EndedBlocksDoNotWait) {
  EmbeddedMainQueue queue;
  WorkItem item = queue.schedule(std::chrono::seconds(1), [] { FAIL(); });
  TimerSource timer = queue.repeat({}, std::chrono::seconds(1), [] { FAIL(); });
  EXPECT_EQ(queue.pendingCount(), 2U);
  item.reset();
  timer.reset();
  EXPECT_EQ(queue.pendingCount(), 0U);
  queue.advance(std::chrono::seconds(5));
}

}  // namespace
}  // namespace vembrix
