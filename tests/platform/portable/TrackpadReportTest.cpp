#include "platform/portable/TrackpadReport.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <cstring>
#include <limits>

#include "platform/DockSwipeEvent.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Bytes = std::vector<std::uint8_t>;

/// Returns the number at that offset, its lowest byte first.
template <typename Number>
Number numberAt(const Bytes& bytes, std::size_t place) {
  std::uint64_t bits = 0;
  for (std::size_t i = sizeof(Number); i-- > 0;) bits = bits << 8U | bytes.at(place + i);
  return static_cast<Number>(bits);
}

// The offsets of the parts of a report, and the numbers in a part.
constexpr std::size_t kSwipe = 28;
constexpr std::size_t kVelocity = kSwipe + 40;
constexpr std::size_t kWhole = kVelocity + 28;
constexpr std::size_t kProgress = kSwipe + 36;
constexpr std::size_t kVelocityX = kVelocity + 16;

TrackpadSwipe swipe(dockswipe::Phase phase, double progress = 1, double velocity = 0) {
  return {
      .timestamp = 0x0102030405060708, .phase = phase, .progress = progress, .velocity = velocity};
}

TEST(TrackpadReportTest, BeginsWithTheTimeAndTheNumberOfItsEvents) {
  const Bytes report = trackpadReport(swipe(dockswipe::Begin));
  ASSERT_THAT(report, SizeIs(kVelocity));
  EXPECT_EQ(numberAt<std::uint64_t>(report, 0), 0x0102030405060708U);
  EXPECT_EQ(report[0], 8) << "the lowest byte comes first";
  EXPECT_EQ(numberAt<std::uint64_t>(report, 8), 0U) << "from no device";
  EXPECT_EQ(numberAt<std::uint32_t>(report, 16), 0U);
  EXPECT_EQ(numberAt<std::uint32_t>(report, 20), 0U);
  EXPECT_EQ(numberAt<std::uint32_t>(report, 24), 1U);
}

TEST(TrackpadReportTest, TellsAHorizontalSwipeForTheDockAndItsPhase) {
  const Bytes report = trackpadReport(swipe(dockswipe::Change, 0.5));
  EXPECT_EQ(numberAt<std::uint32_t>(report, kSwipe), 40U);
  EXPECT_EQ(numberAt<std::uint32_t>(report, kSwipe + 4), 23U);
  EXPECT_EQ(numberAt<std::uint32_t>(report, kSwipe + 8), 2U << 24U);
  EXPECT_EQ(numberAt<std::uint32_t>(report, kSwipe + 12), 0U);
  EXPECT_EQ(numberAt<std::int32_t>(report, kSwipe + 16), 6553) << "a tenth";
  EXPECT_EQ(numberAt<std::uint16_t>(report, kSwipe + 32), 1U);
  EXPECT_EQ(numberAt<std::uint16_t>(report, kSwipe + 34), 3U);
  EXPECT_EQ(numberAt<std::int32_t>(report, kProgress), 0x8000);
}

TEST(TrackpadReportTest, TellsTheVelocityAtTheEndAlone) {
  for (const auto phase : {dockswipe::Begin, dockswipe::Change}) {
    EXPECT_THAT(trackpadReport(swipe(phase, 1, 400)), SizeIs(kVelocity));
  }
  for (const auto phase : {dockswipe::End, dockswipe::Cancel}) {
    const Bytes report = trackpadReport(swipe(phase, 1, -400));
    ASSERT_THAT(report, SizeIs(kWhole));
    EXPECT_EQ(numberAt<std::uint32_t>(report, 24), 2U);
    EXPECT_EQ(numberAt<std::uint32_t>(report, kVelocity), 28U);
    EXPECT_EQ(numberAt<std::uint32_t>(report, kVelocity + 4), 9U);
    EXPECT_EQ(numberAt<std::uint32_t>(report, kVelocity + 12), 1U) << "it belongs to the swipe";
    EXPECT_EQ(numberAt<std::int32_t>(report, kVelocityX), -400 * 65536);
    EXPECT_EQ(numberAt<std::int32_t>(report, kVelocityX + 4), 0);
  }
}

TEST(TrackpadReportTest, ASwipeThatIsTooShortForItsUnitsStillGoesThatWay) {
  const double tiny = std::numeric_limits<double>::denorm_min();
  const auto progress = [](double value) {
    return numberAt<std::int32_t>(trackpadReport(swipe(dockswipe::Begin, value)), kProgress);
  };
  EXPECT_EQ(progress(tiny), 1);
  EXPECT_EQ(progress(-tiny), -1);
  EXPECT_EQ(progress(0), 0);
  EXPECT_EQ(progress(1), 65536);
  EXPECT_EQ(progress(-1), -65536);
}

TEST(TrackpadReportTest, NumbersTooLargeForItsUnitsAreTheLargest) {
  const auto velocity = [](double value) {
    return numberAt<std::int32_t>(trackpadReport(swipe(dockswipe::End, 1, value)), kVelocityX);
  };
  EXPECT_EQ(velocity(1e9), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(velocity(-1e9), -std::numeric_limits<std::int32_t>::max());
}

TEST(TrackpadReportTest, IsAddedToASerialisedEventAsOneMoreField) {
  const Bytes event{0, 0, 0, 2, 0, 1, 0x40, 0x37, 0, 0, 0, 30};
  const Bytes report{7, 8, 9};
  EXPECT_THAT(withTrackpadReport(event, report),
              ElementsAre(0, 0, 0, 2, 0, 1, 0x40, 0x37, 0, 0, 0, 30, 0, 3, 0x10, 0x6D, 7, 8, 9));
}

TEST(TrackpadReportTest, AnEventInAnUnknownFormIsNotTouched) {
  const Bytes report{7};
  EXPECT_THAT(withTrackpadReport(Bytes{}, report), IsEmpty());
  EXPECT_THAT(withTrackpadReport(Bytes{0, 0, 0}, report), IsEmpty());
  EXPECT_THAT(withTrackpadReport(Bytes{0, 0, 0, 3, 1}, report), IsEmpty());
  EXPECT_THAT(withTrackpadReport(Bytes{2, 0, 0, 0}, report), IsEmpty());
}

TEST(TrackpadReportTest, AReportThatNoFieldCanHoldIsNotAdded) {
  const Bytes event{0, 0, 0, 2};
  EXPECT_THAT(withTrackpadReport(event, Bytes(65536)), IsEmpty());
  EXPECT_THAT(withTrackpadReport(event, Bytes(65535)), SizeIs(4 + 4 + 65535));
}

}  // namespace
}  // namespace vembrix
