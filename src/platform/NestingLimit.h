#pragma once

namespace vembrix {

/// How deep arrays and dictionaries may be nested where they are read or
/// written. Values of the program nest a few levels; text of unknown origin
/// must not be able to use up the stack.
constexpr int kNestingLimit = 512;

}  // namespace vembrix
