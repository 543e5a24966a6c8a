#include "platform/embedded/PropertyListText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>

#include "platform/embedded/RealText.h"

namespace vembrix {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using std::chrono::year_month_day;

constexpr std::string_view kBase64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view kXmlSpace = " \t\n\r";

constexpr sys_seconds kReferenceDate = sys_days(std::chrono::January / 1 / 2001);
constexpr sys_seconds kFirstDate = sys_days(std::chrono::January / 1 / 0);
constexpr sys_seconds kEndOfDates = sys_days(std::chrono::January / 1 / 10000);

/// The number that the digits write; nothing unless all are digits.
std::optional<int> parseDigits(std::string_view text) {
  int value = 0;
  const char* end = text.data() + text.size();
  if (text.empty() || text.front() == '-') return std::nullopt;
  const auto result = std::from_chars(text.data(), end, value);
  return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

char lowercase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::optional<std::string> dateText(PropertyList::Date date) {
  const double whole = std::floor(date.seconds);
  const auto first = static_cast<double>((kFirstDate - kReferenceDate).count());
  const auto end = static_cast<double>((kEndOfDates - kReferenceDate).count());
  if (!(whole >= first && whole < end)) return std::nullopt;
  const sys_seconds time = kReferenceDate + seconds(static_cast<std::int64_t>(whole));
  const sys_days day = floor<days>(time);
  const year_month_day calendar(day);
  const std::chrono::hh_mm_ss clock(time - day);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
                static_cast<int>(calendar.year()), static_cast<unsigned>(calendar.month()),
                static_cast<unsigned>(calendar.day()), static_cast<int>(clock.hours().count()),
                static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text.data();
}

std::optional<PropertyList::Date> parseDate(std::string_view text) {
  constexpr std::string_view kPattern = "0000-00-00T00:00:00Z";
  if (text.size() != kPattern.size()) return std::nullopt;
  for (const std::size_t at : {4U, 7U, 10U, 13U, 16U, 19U}) {
    if (text[at] != kPattern[at]) return std::nullopt;
  }
  const auto year = parseDigits(text.substr(0, 4));
  const auto month = parseDigits(text.substr(5, 2));
  const auto day = parseDigits(text.substr(8, 2));
  const auto hour = parseDigits(text.substr(11, 2));
  const auto minute = parseDigits(text.substr(14, 2));
  const auto second = parseDigits(text.substr(17, 2));
  if (!year || !month || !day || !hour || !minute || !second) return std::nullopt;
  const year_month_day calendar(std::chrono::year(*year),
                                std::chrono::month(static_cast<unsigned>(*month)),
                                std::chrono::day(static_cast<unsigned>(*day)));
  // A leap second is the first one of the next minute.
  if (!calendar.ok() || *hour > 23 || *minute > 59 || *second > 60) return std::nullopt;
  const seconds clock(*hour * 3600 + *minute * 60 + *second);
  const seconds sinceReference = sys_days(calendar) + clock - kReferenceDate;
  return PropertyList::Date{static_cast<double>(sinceReference.count())};
}

std::string dataText(const PropertyList::Data& data) {
  std::string text;
  text.reserve((data.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < data.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, data.size() - i);
    std::uint32_t bits = 0;
    for (std::size_t j = 0; j < 3; ++j) bits = bits << 8 | (j < count ? data[i + j] : 0U);
    for (std::size_t j = 0; j < 4; ++j) {
      text += j <= count ? kBase64Digits[bits >> (18 - 6 * j) & 0x3F] : '=';
    }
  }
  return text;
}

std::optional<PropertyList::Data> parseData(std::string_view text) {
  PropertyList::Data data;
  std::uint32_t bits = 0;
  int digits = 0;
  int padding = 0;
  for (const char c : text) {
    if (kXmlSpace.find(c) != std::string_view::npos) continue;
    if (c == '=') {
      padding += 1;
      continue;
    }
    const std::size_t digit = kBase64Digits.find(c);
    if (digit == std::string_view::npos || padding > 0) return std::nullopt;
    bits = bits << 6 | static_cast<std::uint32_t>(digit);
    digits += 1;
    // The first digit of four fills no byte, each of the others one.
    const int left = (4 - digits % 4) % 4;
    if (left != 3) data.push_back(static_cast<std::uint8_t>(bits >> (2 * left)));
  }
  const bool complete = digits % 4 != 1 && padding == (4 - digits % 4) % 4;
  return complete ? std::optional(std::move(data)) : std::nullopt;
}

std::optional<PropertyList> parseInteger(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  int base = 10;
  if (text.starts_with("0x") || text.starts_with("0X")) {
    base = 16;
    text.remove_prefix(2);
  }
  std::uint64_t magnitude = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, magnitude, base);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  constexpr std::uint64_t kMaximum = std::numeric_limits<std::int64_t>::max();
  if (magnitude > kMaximum + (negative ? 1 : 0)) {
    const auto real = static_cast<double>(magnitude);
    return PropertyList(negative ? -real : real);
  }
  // In unsigned arithmetic the lowest number has a negation as well.
  return PropertyList(static_cast<std::int64_t>(negative ? -magnitude : magnitude));
}

std::string propertyListRealText(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "+infinity" : "-infinity";
  return realText(value);
}

std::optional<double> parsePropertyListReal(std::string_view text) {
  if (const std::optional<double> finite = parseReal(text)) return finite;
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  std::string word(text);
  for (char& c : word) c = lowercase(c);
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (word == "inf" || word == "infinity") return negative ? -kInfinity : kInfinity;
  if (word == "nan") return std::numeric_limits<double>::quiet_NaN();
  return std::nullopt;
}

std::string_view trimXmlSpace(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kXmlSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kXmlSpace) - first + 1);
}

}  // namespace vembrix
