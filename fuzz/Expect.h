#pragma once

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace vembrix {

/// What must hold whatever the bytes are; else the fuzzer keeps the bytes.
inline void expect(bool isSo) {
  if (!isSo) std::abort();
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace vembrix
