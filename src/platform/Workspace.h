#pragma once

#include <string_view>

namespace vembrix {

/// Starts other programs through the desktop. Main thread.
class Workspace {
 public:
  static Workspace& shared();

  virtual ~Workspace() = default;

  /// Opens the address with the user's program for it. Does not wait for that program and reports
  /// no errors.
  virtual void openURL(std::string_view url) = 0;
};

}  // namespace vembrix
