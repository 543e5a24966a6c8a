#pragma once

#include <string_view>

#include "platform/PropertyList.h"
#include "platform/Token.h"

namespace vembrix {

/// The user's stored settings of this application, and, for reading only, those
/// of other applications. Main thread. Nothing is reported: a store that cannot
/// be read is empty, a value that has no form is logged once and lost, and what the disk
/// does not take is tried again.
class UserDefaults {
 public:
  /// The one store of the process; lives as long as it.
  static UserDefaults& standard();

  virtual ~UserDefaults() = default;

  /// The value under the key, or null. Always what is stored now: a value that
  /// another program has written since is seen. Reading a value that has not
  /// changed since the last read allocates nothing where the system allows it.
  [[nodiscard]] virtual PropertyList object(std::string_view key) const = 0;

  /// For those who read several values, or one many times: while the token lives, what
  /// another program writes may stay unseen, so that each reading need not ask the
  /// system. Within one event only. Empty where reading asks nobody.
  [[nodiscard]] virtual Token beginReading() { return {}; }

  /// Stores the value; null removes the key. It counts at once for readers of this
  /// process. On the disk it may follow up to half a second later, at the latest when the
  /// process ends; a process that is killed may lose that half second, all of it or the
  /// end of it.
  virtual void set(std::string_view key, const PropertyList& value) = 0;

  /// The keys of another application's domain, for the current user and any
  /// host: an array of strings where the domain exists, else null. Untouched.
  [[nodiscard]] virtual PropertyList keyList(std::string_view domain) const = 0;

  /// One value of another application's domain, or null.
  [[nodiscard]] virtual PropertyList object(std::string_view key,
                                            std::string_view domain) const = 0;
};

}  // namespace vembrix
