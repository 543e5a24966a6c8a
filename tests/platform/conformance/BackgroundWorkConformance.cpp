#include "platform/BackgroundWork.h"

#include <gmock/gmock.h>

#include <memory>
#include <numeric>
#include <thread>
#include <vector>

#include "platform/conformance/SystemUnderTest.h"

namespace vembrix {
namespace {

using namespace std::chrono_literals;

class BackgroundWorkConformance : public testing::Test {
 protected:
  SystemUnderTest& system_ = SystemUnderTest::shared();
};

TEST_F(BackgroundWorkConformance, WorkRunsOnAnotherThreadAndItsCompletionOnThisOne) {
  std::thread::id worker;
  std::thread::id completer;
  runInBackground([] { return std::this_thread::get_id(); },
                  [&](std::thread::id id) {
                    worker = id;
                    completer = std::this_thread::get_id();
                  });
  EXPECT_EQ(completer, std::thread::id()) << "it must not run before this has returned";
  ASSERT_TRUE(system_.runUntil([&] { return completer != std::thread::id(); }, 10s));
  EXPECT_EQ(completer, std::this_thread::get_id());
  EXPECT_NE(worker, std::this_thread::get_id());
}

TEST_F(BackgroundWorkConformance, AResultThatCannotBeCopiedArrives) {
  std::unique_ptr<int> received;
  runInBackground([] { return std::make_unique<int>(7); },
                  [&](std::unique_ptr<int> value) { received = std::move(value); });
  ASSERT_TRUE(system_.runUntil([&] { return received != nullptr; }, 10s));
  EXPECT_EQ(*received, 7);
}

TEST_F(BackgroundWorkConformance, ManyBlocksAllRun) {
  constexpr int kCount = 50;
  std::vector<int> results;
  for (int i = 0; i < kCount; ++i) {
    runInBackground([i] { return i; }, [&](int value) { results.push_back(value); });
  }
  ASSERT_TRUE(system_.runUntil([&] { return results.size() == kCount; }, 30s));
  std::vector<int> expected(kCount);
  std::iota(expected.begin(), expected.end(), 0);
  EXPECT_THAT(results, testing::UnorderedElementsAreArray(expected));
}

/// Records the thread on which it is destroyed.
struct Owned {
  explicit Owned(std::thread::id& end) : end_(end) {}
  ~Owned() { end_ = std::this_thread::get_id(); }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;

 private:
  std::thread::id& end_;
};

TEST_F(BackgroundWorkConformance, WhatTheCompletionOwnsEndsOnThisThread) {
  std::thread::id end;
  auto owned = std::make_shared<Owned>(end);
  runInBackground([] { return 1; }, [owned](int) {});
  owned.reset();
  ASSERT_TRUE(system_.runUntil([&] { return end != std::thread::id(); }, 10s));
  EXPECT_EQ(end, std::this_thread::get_id());
}

}  // namespace
}  // namespace vembrix
