#include "platform/embedded/RealText.h"

#include <cmath>
#include <limits>
#include <locale>
#include <sstream>

namespace vembrix {
namespace {

/// One past the digits that start at `at`; `at` itself when there are none.
std::size_t skipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && text[at] >= '0' && text[at] <= '9') at += 1;
  return at;
}

bool isDecimal(std::string_view text) {
  std::size_t at = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
  const std::size_t whole = at;
  at = skipDigits(text, at);
  std::size_t digits = at - whole;
  if (at < text.size() && text[at] == '.') {
    const std::size_t fraction = at + 1;
    at = skipDigits(text, fraction);
    digits += at - fraction;
  }
  if (digits == 0) return false;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    at += 1;
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) at += 1;
    const std::size_t exponent = at;
    at = skipDigits(text, exponent);
    if (at == exponent) return false;
  }
  return at == text.size();
}

}  // namespace

std::string realText(double value) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  for (int digits = 15; digits <= std::numeric_limits<double>::max_digits10; ++digits) {
    stream.str({});
    stream.precision(digits);
    stream << value;
    if (parseReal(stream.str()) == value) break;
  }
  std::string text = stream.str();
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

std::optional<double> parseReal(std::string_view text) {
  if (!isDecimal(text)) return std::nullopt;
  if (text.front() == '+') text.remove_prefix(1);
  std::istringstream stream{std::string(text)};
  stream.imbue(std::locale::classic());
  double value = 0;
  stream >> value;
  // A failed conversion of such text is a number out of range: one too close to
  // zero is rounded, one too large has no value.
  if (stream.fail() && !(std::abs(value) < 1)) return std::nullopt;
  return value;
}

}  // namespace vembrix
