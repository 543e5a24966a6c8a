#include "platform/portable/TrackpadReport.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <utility>

namespace vembrix {
namespace {

// Types of input events, by the kernel's numbers.
constexpr std::uint32_t kVelocityType = 9;
constexpr std::uint32_t kDockSwipeType = 23;

// The sizes of events of these types, in bytes.
constexpr std::uint32_t kVelocitySize = 28;
constexpr std::uint32_t kDockSwipeSize = 40;

/// Writes numbers one after the other, the lowest byte first.
class Report {
 public:
  template <typename Number>
  void add(Number number) {
    auto bits = static_cast<std::uint64_t>(number);
    for (std::size_t byte = 0; byte < sizeof(Number); ++byte, bits >>= 8U) {
      bytes_.push_back(static_cast<std::uint8_t>(bits & 0xFFU));
    }
  }

  /// Writes a number in units of 1/65536. A number that is too small for them becomes the smallest,
  /// because the Dock drops swipes that do not move.
  void addFixed(double value) {
    constexpr double kLimit = std::numeric_limits<std::int32_t>::max();
    const double scaled = std::clamp(value * 65536, -kLimit, kLimit);
    auto fixed = static_cast<std::int32_t>(scaled);
    if (fixed == 0 && value != 0) fixed = value > 0 ? 1 : -1;
    add(fixed);
  }

  void addEventHeader(std::uint32_t size, std::uint32_t type, std::uint32_t options,
                      std::uint32_t depth) {
    add(size);
    add(type);
    add(options);
    add(depth);
  }

  std::vector<std::uint8_t> take() { return std::move(bytes_); }

 private:
  std::vector<std::uint8_t> bytes_;
};

void addSwipe(Report& report, const TrackpadSwipe& swipe) {
  constexpr std::uint32_t kPhaseShift = 24;
  const auto options = static_cast<std::uint32_t>(swipe.phase & 0xFF) << kPhaseShift;
  report.addEventHeader(kDockSwipeSize, kDockSwipeType, options, /*depth=*/0);
  report.addFixed(TrackpadSwipe::fingerPosition);
  report.addFixed(0);
  report.addFixed(0);
  // An obsolete mask of directions.
  report.add(std::uint32_t{0});
  report.add(static_cast<std::uint16_t>(dockswipe::kHorizontal));
  report.add(TrackpadSwipe::flavor);
  report.addFixed(swipe.progress);
}

void addVelocity(Report& report, double velocity) {
  report.addEventHeader(kVelocitySize, kVelocityType, /*options=*/0, /*depth=*/1);
  report.addFixed(velocity);
  report.addFixed(0);
  report.addFixed(0);
}

}  // namespace

std::vector<std::uint8_t> trackpadReport(const TrackpadSwipe& swipe) {
  Report report;
  report.add(swipe.timestamp);
  // The sender: no device.
  report.add(std::uint64_t{0});
  // No options and no attributes.
  report.add(std::uint32_t{0});
  report.add(std::uint32_t{0});
  report.add(std::uint32_t{swipe.isLast() ? 2U : 1U});
  addSwipe(report, swipe);
  if (swipe.isLast()) addVelocity(report, swipe.velocity);
  return report.take();
}

std::vector<std::uint8_t> withTrackpadReport(std::span<const std::uint8_t> event,
                                             std::span<const std::uint8_t> report) {
  // A serialised event is its version and one record for each field: the size of the contents, the
  // kind and number of the field in 16 bits, and the contents. The highest byte comes first.
  constexpr std::array<std::uint8_t, 4> kVersion{0, 0, 0, 2};
  constexpr std::uint16_t kReportField = 0x106D;
  if (event.size() < kVersion.size() || !std::ranges::equal(event.first<4>(), kVersion)) return {};
  if (report.size() > std::numeric_limits<std::uint16_t>::max()) return {};
  std::vector<std::uint8_t> bytes(event.begin(), event.end());
  for (const std::size_t number : {report.size(), std::size_t{kReportField}}) {
    bytes.push_back(static_cast<std::uint8_t>(number >> 8U));
    bytes.push_back(static_cast<std::uint8_t>(number & 0xFFU));
  }
  bytes.insert(bytes.end(), report.begin(), report.end());
  return bytes;
}

}  // namespace vembrix
