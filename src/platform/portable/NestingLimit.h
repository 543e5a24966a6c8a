#pragma once

namespace vembrix {

/// The greatest depth of nested arrays and dictionaries that is read or written, so that text of
/// unknown origin cannot exhaust the stack.
constexpr int kNestingLimit = 512;

}  // namespace vembrix
