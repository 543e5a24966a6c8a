#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace vembrix {

/// Owns one reference to a Core Foundation object. Move-only; may be empty. Created by adopt() or
/// retain(), which state where the reference comes from.
template <typename Ref>
class CFOwned {
 public:
  CFOwned() = default;
  ~CFOwned() {
    if (ref_) CFRelease(ref_);
  }

  CFOwned(CFOwned&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
  CFOwned& operator=(CFOwned&& other) noexcept {
    std::swap(ref_, other.ref_);
    return *this;
  }
  CFOwned(const CFOwned&) = delete;
  CFOwned& operator=(const CFOwned&) = delete;

  /// Takes over the caller's reference: the result of a call with Create or Copy in its name. Empty
  /// for null.
  [[nodiscard]] static CFOwned adopt(Ref ref) { return CFOwned(ref); }

  /// Adds a reference to an object that belongs to another.
  [[nodiscard]] static CFOwned retain(Ref ref) {
    if (ref) CFRetain(ref);
    return CFOwned(ref);
  }

  [[nodiscard]] Ref get() const { return ref_; }
  explicit operator bool() const { return ref_ != nullptr; }

 private:
  explicit CFOwned(Ref ref) : ref_(ref) {}

  Ref ref_ = nullptr;
};

}  // namespace vembrix
