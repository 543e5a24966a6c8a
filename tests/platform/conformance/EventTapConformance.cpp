#include "platform/EventTap.h"

#include <gmock/gmock.h>

#include <chrono>
#include <vector>

#include "platform/DockSwipeEvent.h"
#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EventTapConformance : public testing::Test {
 protected:
  /// Posts an event and runs the main queue, which delivers it on some systems.
  void post(std::int64_t phase) {
    const auto event = DockSwipeEvent::create();
    event->setIntegerField(dockswipe::EventType, dockswipe::kDockControl);
    event->setIntegerField(dockswipe::GestureKind, dockswipe::kDockSwipe);
    event->setIntegerField(dockswipe::GesturePhase, phase);
    event->setDoubleField(dockswipe::Progress, -0.25);
    event->setDoubleField(dockswipe::VelocityX, 1.5);
    event->post();
    system_.runFor(std::chrono::milliseconds(10));
  }

  SystemUnderTest& system_ = SystemUnderTest::shared();
  std::vector<std::int64_t> phases_;
  EventTap::Handler recordPhases_ = [this](std::uint32_t, const TappedEvent& event) {
    phases_.push_back(event.integerField(dockswipe::GesturePhase));
  };
};

TEST_F(EventTapConformance, SeesNothingBeforeItIsEnabled) {
  const auto tap = EventTap::create(recordPhases_);
  ASSERT_NE(tap, nullptr);
  post(dockswipe::Begin);
  EXPECT_THAT(phases_, IsEmpty());
  tap->enable();
  post(dockswipe::Change);
  EXPECT_THAT(phases_, ElementsAre(dockswipe::Change));
}

TEST_F(EventTapConformance, SeesTheFieldsOfAnEvent) {
  int seen = 0;
  const auto tap = EventTap::create([&](std::uint32_t type, const TappedEvent& event) {
    seen += 1;
    EXPECT_EQ(type, static_cast<std::uint32_t>(dockswipe::kDockControl));
    EXPECT_EQ(event.integerField(dockswipe::EventType), dockswipe::kDockControl);
    EXPECT_EQ(event.integerField(dockswipe::GestureKind), dockswipe::kDockSwipe);
    EXPECT_EQ(event.integerField(dockswipe::GesturePhase), dockswipe::Begin);
    EXPECT_EQ(event.doubleField(dockswipe::Progress), -0.25);
    EXPECT_EQ(event.doubleField(dockswipe::VelocityX), 1.5);
    EXPECT_EQ(event.doubleField(dockswipe::VelocityY), 0);
    EXPECT_EQ(event.integerField(77), 0);
  });
  tap->enable();
  post(dockswipe::Begin);
  EXPECT_EQ(seen, 1);
}

TEST_F(EventTapConformance, APostedEventTellsThatAProcessPostedIt) {
  std::int64_t source = 0;
  const auto tap = EventTap::create([&](std::uint32_t, const TappedEvent& event) {
    source = event.integerField(dockswipe::SourceProcess);
  });
  tap->enable();
  post(dockswipe::Begin);
  EXPECT_NE(source, 0);
}

TEST_F(EventTapConformance, ADroppedTapSeesNothing) {
  auto tap = EventTap::create(recordPhases_);
  tap->enable();
  post(dockswipe::Begin);
  tap.reset();
  post(dockswipe::Cancel);
  EXPECT_THAT(phases_, ElementsAre(dockswipe::Begin));
}

TEST_F(EventTapConformance, AHandlerMayDropItsTap) {
  const auto after = EventTap::create(recordPhases_);
  after->enable();
  std::unique_ptr<EventTap> tap;
  tap = EventTap::create([this, &tap](std::uint32_t, const TappedEvent& event) {
    tap.reset();
    phases_.push_back(event.integerField(dockswipe::GesturePhase) * 10);
  });
  tap->enable();
  post(dockswipe::Begin);
  post(dockswipe::Change);
  EXPECT_THAT(phases_, ElementsAre(dockswipe::Begin * 10, dockswipe::Begin, dockswipe::Change));
}

TEST_F(EventTapConformance, EveryTapSeesEveryEvent) {
  const auto first = EventTap::create(recordPhases_);
  const auto second = EventTap::create(recordPhases_);
  first->enable();
  second->enable();
  post(dockswipe::Begin);
  EXPECT_THAT(phases_, ElementsAre(dockswipe::Begin, dockswipe::Begin));
}

}  // namespace
}  // namespace vembrix
