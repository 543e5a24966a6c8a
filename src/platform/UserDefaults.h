#pragma once

#include <string_view>

#include "platform/PropertyList.h"
#include "platform/Token.h"

namespace vembrix {

/// The user's stored settings of this application and, read-only, those of others. Main thread.
/// Reports no errors: an unreadable store is empty, a value that cannot be stored is logged once
/// and dropped, and a failed write is tried again.
class UserDefaults {
 public:
  /// The process's only store; lives as long as the process.
  static UserDefaults& standard();

  virtual ~UserDefaults() = default;

  /// Returns the present value under the key, even if another program has stored it; null if there
  /// is none. Reading an unchanged value again allocates nothing if the system allows it.
  [[nodiscard]] virtual PropertyList object(std::string_view key) const = 0;

  /// Makes several readings within one event cheaper: while the token lives, changes by other
  /// programs may stay unseen. Empty if reading is cheap anyway.
  [[nodiscard]] virtual Token beginReading() { return {}; }

  /// Stores the value; null removes the key. Takes effect at once in this process and reaches the
  /// disk within half a second, at the latest when the process ends. A killed process may lose the
  /// stores of its last half second.
  virtual void set(std::string_view key, const PropertyList& value) = 0;

  /// Returns the keys of another application's domain, for the current user and any host: an array
  /// of strings, or null if there is no such domain.
  [[nodiscard]] virtual PropertyList keyList(std::string_view domain) const = 0;

  /// Returns a value of another application's domain; null if there is none.
  [[nodiscard]] virtual PropertyList object(std::string_view key,
                                            std::string_view domain) const = 0;
};

}  // namespace vembrix
