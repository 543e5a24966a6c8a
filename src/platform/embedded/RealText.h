#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vembrix {

// Reals as decimal text, whatever the locale of the process.

/// A short decimal form that reads back as the same number, always with a
/// fraction or an exponent. The value must be finite.
std::string realText(double value);

/// Reads digits with an optional sign, fraction and exponent. Nothing when
/// anything else stands there or the number is too large for a double.
std::optional<double> parseReal(std::string_view text);

}  // namespace vembrix
