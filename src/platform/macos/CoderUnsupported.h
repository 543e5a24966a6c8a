#pragma once

#include <cstdio>
#include <cstdlib>

namespace vembrix {

/// The end of a view's initWithCoder:, where the view has one: views are made in
/// code, and an archived one would lack what its initialiser is given. Ends the
/// process.
[[noreturn]] inline void coderIsUnsupported() {
  std::fputs("init(coder:) not supported\n", stderr);
  std::abort();
}

}  // namespace vembrix
