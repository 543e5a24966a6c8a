#pragma once

namespace vembrix {

/// The permission to observe and post input of other programs. Main thread.
class Accessibility {
 public:
  enum class Prompt { No, Yes };

  static Accessibility& shared();

  virtual ~Accessibility() = default;

  /// Returns whether the user has granted the permission by now. With Prompt::Yes the system asks
  /// for it if it is missing; the call does not wait for the answer.
  virtual bool isProcessTrusted(Prompt prompt) = 0;
};

}  // namespace vembrix
