#pragma once

#include "platform/Bundle.h"

namespace vembrix {

/// A bundle whose information dictionary a test sets; initially it has none, like a program outside
/// a bundle.
class EmbeddedBundle : public Bundle {
 public:
  /// The bundle behind Bundle::main().
  static EmbeddedBundle& shared();

  PropertyList infoValue(std::string_view key) const override { return info_[key]; }

  /// A dictionary, or null for none.
  void setInfo(PropertyList info) { info_ = std::move(info); }

 private:
  PropertyList info_;
};

}  // namespace vembrix
