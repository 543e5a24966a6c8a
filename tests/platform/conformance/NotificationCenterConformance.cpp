#include <gmock/gmock.h>

#include <chrono>
#include <ostream>
#include <string>
#include <vector>

#include "platform/NotificationCenter.h"
#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Center {
  const char* name;
  NotificationCenter& (*get)();

  friend std::ostream& operator<<(std::ostream& stream, const Center& center) {
    return stream << center.name;
  }
};

class NotificationCenterConformance : public testing::TestWithParam<Center> {
 protected:
  /// Posts, and waits until the notification, and all that its handlers posted, were delivered.
  void post(std::string_view name) {
    center_.post(name);
    for (int depth = 0; depth < 4; ++depth) runUntilDelivered();
  }

  /// Waits until everything posted before is delivered, as notifications arrive in order.
  void runUntilDelivered() {
    bool delivered = false;
    const auto last = center_.addObserver("last of all", [&] { delivered = true; });
    center_.post("last of all");
    EXPECT_TRUE(system_.runUntil([&] { return delivered; }, std::chrono::seconds(10)));
  }

  [[nodiscard]] Observation note(std::string_view name, const std::string& word) {
    return center_.addObserver(name, [this, word] { calls_.push_back(word); });
  }

  SystemUnderTest& system_ = SystemUnderTest::shared();
  NotificationCenter& center_ = GetParam().get();
  std::vector<std::string> calls_;
};

TEST_P(NotificationCenterConformance, CallsTheObserversOfTheName) {
  const auto one = note("one", "one");
  const auto two = note("two", "two");
  post("two");
  EXPECT_THAT(calls_, ElementsAre("two"));
  post("one");
  post("one");
  EXPECT_THAT(calls_, ElementsAre("two", "one", "one"));
}

TEST_P(NotificationCenterConformance, TakesAnyNameByItsCharacters) {
  const std::string name = "name";
  const auto observation = note(name, "called");
  post("name and more");
  post("");
  EXPECT_THAT(calls_, IsEmpty());
  post(std::string_view("name and more").substr(0, 4));
  EXPECT_THAT(calls_, ElementsAre("called"));
}

TEST_P(NotificationCenterConformance, CallsInTheOrderOfAdding) {
  const auto first = note("name", "first");
  const auto second = note("name", "second");
  const auto third = note("name", "third");
  post("name");
  EXPECT_THAT(calls_, ElementsAre("first", "second", "third"));
}

TEST_P(NotificationCenterConformance, CallsOnceForEachObservationOfOneHandler) {
  int calls = 0;
  const auto handler = [&calls] { calls += 1; };
  const auto one = center_.addObserver("name", handler);
  const auto two = center_.addObserver("name", handler);
  post("name");
  EXPECT_EQ(calls, 2);
}

TEST_P(NotificationCenterConformance, ADroppedObservationIsOver) {
  auto observation = note("name", "dropped");
  const auto other = note("name", "other");
  observation.reset();
  post("name");
  EXPECT_THAT(calls_, ElementsAre("other"));
}

TEST_P(NotificationCenterConformance, AnObservationDroppedDuringAPostIsNotCalledAnyMore) {
  Observation later;
  const auto dropper = center_.addObserver("name", [&] {
    calls_.emplace_back("dropper");
    later.reset();
  });
  later = note("name", "later");
  const auto last = note("name", "last");
  post("name");
  EXPECT_THAT(calls_, ElementsAre("dropper", "last"));
}

TEST_P(NotificationCenterConformance, AHandlerMayDropItsOwnObservation) {
  Observation own;
  own = center_.addObserver("name", [&, held = std::string("still here")] {
    own.reset();
    // The captures of the handler live until it returns.
    calls_.push_back(held);
  });
  const auto next = note("name", "next");
  post("name");
  post("name");
  EXPECT_THAT(calls_, ElementsAre("still here", "next", "next"));
}

TEST_P(NotificationCenterConformance, AHandlerMayDropOneThatWasCalledAlready) {
  auto first = note("name", "first");
  const auto second = center_.addObserver("name", [&] { first.reset(); });
  const auto third = note("name", "third");
  post("name");
  post("name");
  EXPECT_THAT(calls_, ElementsAre("first", "third", "third"));
}

TEST_P(NotificationCenterConformance, AnObservationAddedDuringAPostIsCalledFromTheNextOn) {
  std::vector<Observation> added;
  const auto adder = center_.addObserver("name", [&] {
    calls_.emplace_back("adder");
    if (added.empty()) added.push_back(note("name", "added"));
  });
  post("name");
  EXPECT_THAT(calls_, ElementsAre("adder"));
  post("name");
  EXPECT_THAT(calls_, ElementsAre("adder", "adder", "added"));
}

TEST_P(NotificationCenterConformance, AHandlerMayPostAnotherName) {
  const auto outer = center_.addObserver("outer", [&] { center_.post("inner"); });
  const auto inner = note("inner", "inner");
  post("outer");
  EXPECT_THAT(calls_, ElementsAre("inner"));
}

TEST_P(NotificationCenterConformance, AHandlerMayPostItsOwnName) {
  int depth = 0;
  const auto observation = center_.addObserver("name", [&] {
    calls_.push_back(std::to_string(depth));
    if (++depth < 3) center_.post("name");
  });
  post("name");
  EXPECT_THAT(calls_, ElementsAre("0", "1", "2"));
}

TEST_P(NotificationCenterConformance, ManyMayComeAndGoDuringAPost) {
  std::vector<Observation> crowd;
  const auto observation = center_.addObserver("name", [&] {
    for (int i = 0; i < 100; ++i) crowd.push_back(note("name", "member"));
  });
  const auto last = note("name", "last");
  post("name");
  EXPECT_THAT(calls_, ElementsAre("last"));
  crowd.clear();
  calls_.clear();
  post("name");
  EXPECT_THAT(calls_, ElementsAre("last"));
}

TEST_P(NotificationCenterConformance, APostThatNobodyObservesIsOver) {
  post("name");
  const auto observation = note("name", "called");
  system_.runFor(std::chrono::milliseconds(5));
  EXPECT_THAT(calls_, IsEmpty());
}

TEST_P(NotificationCenterConformance, IsTheSameEachTime) {
  EXPECT_EQ(&GetParam().get(), &GetParam().get());
}

INSTANTIATE_TEST_SUITE_P(Of, NotificationCenterConformance,
                         testing::Values(Center{"Process", &NotificationCenter::defaultCenter},
                                         Center{"Workspace", &NotificationCenter::workspace},
                                         Center{"Session", &NotificationCenter::distributed}),
                         [](const auto& info) { return info.param.name; });

class NotificationCentersConformance : public testing::Test {
 protected:
  SystemUnderTest& system_ = SystemUnderTest::shared();
};

TEST_F(NotificationCentersConformance, HaveTheirObserversEachForItself) {
  std::vector<std::string> calls;
  const auto own = NotificationCenter::defaultCenter().addObserver(
      "name", [&] { calls.emplace_back("process"); });
  const auto desktop =
      NotificationCenter::workspace().addObserver("name", [&] { calls.emplace_back("desktop"); });
  const auto session =
      NotificationCenter::distributed().addObserver("name", [&] { calls.emplace_back("session"); });
  NotificationCenter::defaultCenter().post("name");
  system_.runFor(std::chrono::milliseconds(5));
  EXPECT_THAT(calls, ElementsAre("process"));
  NotificationCenter::workspace().post("name");
  system_.runFor(std::chrono::milliseconds(5));
  EXPECT_THAT(calls, ElementsAre("process", "desktop"));
  NotificationCenter::distributed().post("name");
  EXPECT_TRUE(system_.runUntil([&] { return calls.size() == 3; }, std::chrono::seconds(5)));
  EXPECT_THAT(calls, ElementsAre("process", "desktop", "session"));
}

TEST_F(NotificationCentersConformance, OfTheProcessAndTheDesktopCallBeforePostReturns) {
  for (NotificationCenter* center :
       {&NotificationCenter::defaultCenter(), &NotificationCenter::workspace()}) {
    bool called = false;
    const auto observation = center->addObserver("name", [&] { called = true; });
    center->post("name");
    EXPECT_TRUE(called);
  }
}

TEST_F(NotificationCentersConformance, DroppingInAPostWithinAPostHoldsForBoth) {
  for (NotificationCenter* center :
       {&NotificationCenter::defaultCenter(), &NotificationCenter::workspace()}) {
    std::vector<std::string> calls;
    Observation victim;
    int depth = 0;
    const auto observation = center->addObserver("name", [&] {
      if (++depth == 1) {
        center->post("name");
      } else {
        victim.reset();
      }
    });
    victim = center->addObserver("name", [&] { calls.emplace_back("victim"); });
    const auto last = center->addObserver("name", [&] { calls.emplace_back("last"); });
    center->post("name");
    EXPECT_THAT(calls, ElementsAre("last", "last"));
  }
}

}  // namespace
}  // namespace vembrix
