#include <gtest/gtest.h>

#include <cstdlib>
#include <deque>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/AppDelegate.h"
#include "labels/LabelWindows.h"
#include "labels/SignComparison.h"
#include "labels/SignModel.h"
#include "labels/SignWalk.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/embedded/faces/RecordingSignWindow.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

// Compares the labels of the whole program with those of the model after every event of random
// walks. This repeats one walk up to one event and prints every event on standard error:
//
// VEMBRIX_WALK_SEED=7 VEMBRIX_WALK_EVENTS=532 product --gtest_filter='*SignModelTest*'

namespace vembrix {
namespace {

constexpr unsigned kEventsPerSeed = 10'000;
constexpr std::size_t kEventsTold = 20;

std::optional<unsigned> numberFromEnvironment(const char* name) {
  const char* const text = std::getenv(name);
  if (!text) return std::nullopt;
  return static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

std::vector<unsigned> seeds() {
  if (const auto seed = numberFromEnvironment("VEMBRIX_WALK_SEED")) return {*seed};
  return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
}

class SignModelTest : public testing::TestWithParam<unsigned> {
 protected:
  SignModelTest() {
    hasTap_ = desktop_.accessibility().isProcessTrusted(Accessibility::Prompt::No);
    program_->applicationDidFinishLaunching();
    model_->begin();
  }

  void step() {
    number_ += 1;
    last_.push_back(std::to_string(number_) + ": " + walk_.step());
    if (last_.size() > kEventsTold) last_.pop_front();
    if (isTold_) std::cerr << last_.back() << '\n';
  }
  [[nodiscard]] bool isSame() const { return SignComparison(*model_, windows_, false).isSame(); }
  /// Returns everything that is needed to understand a difference.
  [[nodiscard]] std::string story() const {
    std::string text = "the last events:\n";
    for (const std::string& event : last_) text += event + '\n';
    text += "again: VEMBRIX_WALK_SEED=" + std::to_string(GetParam()) +
            " VEMBRIX_WALK_EVENTS=" + std::to_string(number_) + '\n';
    return text + "model | product\n" + SignComparison(*model_, windows_, true).sideBySide();
  }

  EmbeddedDesktop& desktop_ = EmbeddedDesktop::shared();
  EmbeddedMainQueue& queue_ = EmbeddedMainQueue::shared();
  LabelWindows windows_;
  std::unique_ptr<SignModel> model_ = std::make_unique<SignModel>();
  SignWalk walk_{GetParam(), *model_, windows_};
  std::unique_ptr<AppDelegate> program_ = std::make_unique<AppDelegate>();
  /// Without the permission at its launch the program receives no swipes.
  bool hasTap_ = false;
  /// The number of the last event, from 1.
  unsigned number_ = 0;
  std::deque<std::string> last_;
  bool isTold_ = std::getenv("VEMBRIX_WALK_EVENTS") != nullptr;
};

/// Expects that the walks have met all interesting events: others would agree with any rules.
void expectToHaveSeenAll(const SignModel::Census& census, bool watchesSwipes) {
  EXPECT_GT(census.risenShows, 0);
  EXPECT_GT(census.showsEndedByTime, 0);
  EXPECT_GT(census.showsEndedByTouch, 0);
  EXPECT_GT(census.showsEndedByArrival, 0);
  EXPECT_GT(census.arrivalFades, 0);
  EXPECT_GT(census.wavedAway, 0);
  EXPECT_GT(census.neighborsMade, watchesSwipes ? 0 : -1);
  EXPECT_GT(census.fullScreenVisits, 0);
  EXPECT_GT(census.labelsDropped, 0);
  EXPECT_GT(census.putBack, 0);
  EXPECT_GT(census.toursBegun, 0);
  EXPECT_GT(census.missionControls, 0);
  EXPECT_GT(census.fullRecencies, 0);
  EXPECT_GT(census.mostLabels, 6U);
}

TEST_P(SignModelTest, LabelsAreAsTheModelSaysAfterEveryEvent) {
  const unsigned count = numberFromEnvironment("VEMBRIX_WALK_EVENTS").value_or(kEventsPerSeed);
  while (number_ < count) {
    step();
    ASSERT_TRUE(isSame()) << story();
  }
  walk_.settle();
  ASSERT_TRUE(isSame()) << story();
  if (count >= kEventsPerSeed) expectToHaveSeenAll(model_->census(), hasTap_);

  model_.reset();
  program_.reset();
  EXPECT_TRUE(RecordingSignWindow::all().empty());
  EXPECT_EQ(desktop_.windows().count(), 0U);
  EXPECT_EQ(queue_.pendingCount(), 1U) << "Mission Control's timer";
}

INSTANTIATE_TEST_SUITE_P(Seeds, SignModelTest, testing::ValuesIn(seeds()),
                         [](const auto& info) { return "Seed" + std::to_string(info.param); });

}  // namespace
}  // namespace vembrix
