#pragma once

#include <xcb/randr.h>
#include <xcb/xcb_ewmh.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vembrix {

/// Another client of the X server: the user's pager, a settings program, or a misbehaving one.
class X11Client {
 public:
  struct Geometry {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Geometry&) const = default;
  };

  explicit X11Client(const std::string& display);
  ~X11Client();
  X11Client(const X11Client&) = delete;
  X11Client& operator=(const X11Client&) = delete;

  // Each waits for its effect, at most as long as a busy machine may need, and returns whether it
  // came.

  /// Until there is one that takes windows.
  bool waitForWindowManager();
  /// Through the window manager, but none (which no window manager accepts).
  bool setDesktopCount(std::uint32_t count);
  bool goToDesktop(std::uint32_t index);
  /// As the user does with the screen's settings.
  bool resizeScreen(std::uint16_t width, std::uint16_t height);

  /// A window of this client's own, of a program of that class; in front of the
  /// others and with the focus. Undecorated, at the top left.
  bool showWindow(const std::string& windowClass, std::uint16_t width, std::uint16_t height);

  /// Claims to be the compositor until this client ends.
  void claimCompositing();

  /// A panel of this client's own; the window manager may take a moment to show it.
  xcb_window_t showDock(const Geometry& place);

  // Actions on another program's window. Do not wait.

  /// The first two through the window manager, as a pager does.
  void close(xcb_window_t window);
  void moveToDesktop(xcb_window_t window, std::uint32_t index);
  /// Ignores requests to map windows, as a window manager that misses them.
  void ignoreRequests(bool ignore);
  void unmap(xcb_window_t window);
  void raise(xcb_window_t window);
  void resize(xcb_window_t window, std::uint16_t width, std::uint16_t height);
  void reparent(xcb_window_t window, xcb_window_t parent);
  void destroy(xcb_window_t window);
  /// Ends the connection that the window belongs to.
  void kill(xcb_window_t window);
  [[nodiscard]] bool isViewable(xcb_window_t window);

  // The user's input, as devices report it.

  void clickButton(std::uint8_t button);
  /// A key of no meaning.
  void pressKey();
  void movePointer(std::int16_t x, std::int16_t y);
  /// Moves the pointer as a program does, without a device.
  void warpPointer(std::int16_t x, std::int16_t y);

  [[nodiscard]] xcb_window_t root() const;
  /// Windows of any depth whose WM_WINDOW_ROLE is the given one.
  [[nodiscard]] std::vector<xcb_window_t> windowsOfRole(std::string_view role);

  [[nodiscard]] bool isMapped(xcb_window_t window);
  /// Returns whether window managers ignore the window.
  [[nodiscard]] bool isOverrideRedirect(xcb_window_t window);
  /// The window that gets the keyboard.
  [[nodiscard]] xcb_window_t focus();
  /// The children of the root window, back to front.
  [[nodiscard]] std::vector<xcb_window_t> stack();
  /// The one of them that a click would go to; none over the bare root window.
  [[nodiscard]] xcb_window_t windowUnderPointer();

  // Properties, by name, untouched.

  struct Property {
    std::string type;
    int format = 0;
    /// The bytes, in the units that the format has.
    std::string bytes;
  };
  [[nodiscard]] std::optional<Property> property(xcb_window_t window, std::string_view name);
  /// In any case of 32-bit units; else empty.
  [[nodiscard]] std::vector<std::uint32_t> cardinals(xcb_window_t window, std::string_view name);
  /// The names of the atoms that the property holds.
  [[nodiscard]] std::vector<std::string> atoms(xcb_window_t window, std::string_view name);
  void setProperty(xcb_window_t window, std::string_view name, const Property& property);
  void setAtom(xcb_window_t window, std::string_view name, std::string_view value);
  void setWindow(xcb_window_t window, std::string_view name, xcb_window_t value);
  void deleteProperty(xcb_window_t window, std::string_view name);
  /// _NET_DESKTOP_NAMES.
  [[nodiscard]] std::vector<std::string> desktopNames();

  /// Relative to the root window.
  [[nodiscard]] Geometry geometry(xcb_window_t window);

 private:
  /// Whether the window manager takes a window of no meaning, which is gone again.
  bool takesAWindow();
  void fake(std::uint8_t type, std::uint8_t detail, std::int16_t x = 0, std::int16_t y = 0);
  void tellWindowManager(std::string_view message, std::uint32_t value);
  /// Made where the screen has none of that size.
  xcb_randr_mode_t modeOfSize(const xcb_randr_get_screen_resources_current_reply_t& resources,
                              std::uint16_t width, std::uint16_t height);
  xcb_atom_t atom(std::string_view name);
  std::string atomName(xcb_atom_t atom);
  /// Repeats the request until the property has the value.
  bool demand(std::string_view property, std::uint32_t value);
  bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit);
  void collectWindows(xcb_window_t parent, std::string_view role, std::vector<xcb_window_t>& found);

  xcb_ewmh_connection_t ewmh_{};
  int screen_ = 0;
};

}  // namespace vembrix
