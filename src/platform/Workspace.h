#pragma once

#include <string_view>

namespace vembrix {

/// Other programs, as the desktop starts them. Main thread.
class Workspace {
 public:
  static Workspace& shared();

  virtual ~Workspace() = default;

  /// Opens the address with the user's program for it. Returns before that is
  /// there; a failure shows nothing.
  virtual void openURL(std::string_view url) = 0;
};

}  // namespace vembrix
