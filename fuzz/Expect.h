#pragma once

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace vembrix {

/// Aborts if the condition does not hold for the present bytes; the fuzzer then keeps them.
inline void expect(bool isSo) {
  if (!isSo) std::abort();
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace vembrix
