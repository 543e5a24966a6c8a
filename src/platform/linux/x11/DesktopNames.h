#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vembrix {

/// The desktops' names on the root window and the origin of each: written by this program, by the
/// user elsewhere, or by the window manager. Desktops are counted from 0. A plain value; main
/// thread.
class DesktopNames {
 public:
  /// The meaning of names that other programs have written on the root window.
  struct Change {
    /// One of the window manager's own names has changed.
    bool ownNames = false;
    /// The desktop that the user has renamed elsewhere: the only one whose name changed, in steady
    /// circumstances.
    std::optional<std::size_t> renamed;
    bool operator==(const Change&) const = default;
  };
  /// Settling: the window manager has just started or changed its number of desktops, so that all
  /// names that change are its own.
  enum class Circumstances { Settling, Steady };

  /// Takes the present names and returns what changed.
  Change take(std::vector<std::string> names, Circumstances circumstances);

  /// Gives the desktop the user's name, or removes it, which restores the window manager's own name
  /// or, if that is unknown, `fallback`. Returns whether the names are to be written: never if the
  /// window manager keeps its own.
  [[nodiscard]] bool setName(std::size_t desktop, std::string_view name);
  [[nodiscard]] bool clearName(std::size_t desktop, std::string_view fallback);

  /// The window manager's own name; empty if there is none or it is unknown.
  [[nodiscard]] std::string_view ownName(std::size_t desktop) const;
  /// The names on the root window; may be fewer than there are desktops.
  [[nodiscard]] const std::vector<std::string>& all() const { return names_; }
  /// To be called for another window manager. `keepsItsNames`: it accepts only names of its own.
  void setWindowManager(bool keepsItsNames);
  [[nodiscard]] bool keepsItsNames() const { return keepsItsNames_; }

 private:
  /// The name that the user's replaces.
  struct Published {
    std::string name;
    std::string own;
  };

  bool write(std::size_t desktop, std::string_view name);
  /// Forgets written names that were overwritten.
  void forgetOverwritten();

  std::vector<std::string> names_;
  std::map<std::size_t, Published> published_;
  bool keepsItsNames_ = false;
};

// The names' form in the property: one after the other, each ended by a NUL, untrusted bytes. Any
// thread.

/// Splits the property into at most `limit` names, empty ones included. The last may lack its NUL.
std::vector<std::string> desktopNames(std::string_view property, std::size_t limit);

std::string desktopNamesProperty(const std::vector<std::string>& names);

/// Returns whether a window manager of that name names its desktops by its own configuration and
/// takes no names from others. Names then identify its desktops.
bool ownsDesktopNames(std::string_view windowManager);

}  // namespace vembrix
