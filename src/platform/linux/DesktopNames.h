#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vembrix {

/// The names of the desktops as they stand on the root window, and whose they are: those
/// that this program has written, the user's from elsewhere, or the window manager's own.
/// Desktops are counted from 0. Plain values; main thread.
class DesktopNames {
 public:
  /// What the names on the root window mean that others have written.
  struct Change {
    /// A window manager's own name is another one.
    bool ownNames = false;
    /// The user has renamed this desktop elsewhere: it alone changed, on a desktop where
    /// everything else stands still.
    std::optional<std::size_t> renamed;
    bool operator==(const Change&) const = default;
  };
  /// Whether the window manager has just come or has another number of desktops, so that
  /// all names that change are its own.
  enum class Circumstances { Settling, Steady };

  /// Takes the names that are there now.
  Change take(std::vector<std::string> names, Circumstances circumstances);

  /// Gives the desktop the user's name, or takes it back, which brings the window
  /// manager's own name back or, where that is unknown, `fallback`. Returns whether the
  /// names are to be written. Never where the window manager keeps its own names.
  [[nodiscard]] bool setName(std::size_t desktop, std::string_view name);
  [[nodiscard]] bool clearName(std::size_t desktop, std::string_view fallback);

  /// The window manager's own name; empty where there is none or it is unknown.
  [[nodiscard]] std::string_view ownName(std::size_t desktop) const;
  /// As they stand there; may be fewer than there are desktops.
  [[nodiscard]] const std::vector<std::string>& all() const { return names_; }
  /// Another window manager runs. `keepsItsNames`: it takes no other names than its own.
  void setWindowManager(bool keepsItsNames);
  [[nodiscard]] bool keepsItsNames() const { return keepsItsNames_; }

 private:
  /// What the user's name stands in place of.
  struct Published {
    std::string name;
    std::string own;
  };

  bool write(std::size_t desktop, std::string_view name);
  /// Forgets what was written and stands there no more.
  void forgetOverwritten();

  std::vector<std::string> names_;
  std::map<std::size_t, Published> published_;
  bool keepsItsNames_ = false;
};

// The names as window managers keep them: one behind the other, each ended by a NUL. Bytes
// of whoever set them. Any thread.

/// The last may lack its end. Empty names count; those beyond `limit` are left out.
std::vector<std::string> desktopNames(std::string_view property, std::size_t limit);

std::string desktopNamesProperty(const std::vector<std::string>& names);

/// Whether a window manager of that name names its desktops by its own configuration and
/// takes no names from others; its desktops then are known by their names.
bool ownsDesktopNames(std::string_view windowManager);

}  // namespace vembrix
