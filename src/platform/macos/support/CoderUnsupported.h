#pragma once

#include <cstdio>
#include <cstdlib>

namespace vembrix {

/// Ends the process: for the initWithCoder: of views, which are only created in code.
[[noreturn]] inline void coderIsUnsupported() {
  std::fputs("init(coder:) not supported\n", stderr);
  std::abort();
}

}  // namespace vembrix
