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

  // Each call waits for its effect, at most as long as a busy machine may need, and returns whether
  // it came.

  /// Waits for a window manager that accepts windows.
  bool waitForWindowManager();
  /// Sets the number of desktops through the window manager. None, which no window manager accepts,
  /// is written directly.
  bool setDesktopCount(std::uint32_t count);
  bool goToDesktop(std::uint32_t index);
  /// Resizes the screen, like the user in the screen's settings.
  bool resizeScreen(std::uint16_t width, std::uint16_t height);

  /// Shows a window of a program of that class, in front of the others and with the focus.
  /// Undecorated, at the top left.
  bool showWindow(const std::string& windowClass, std::uint16_t width, std::uint16_t height);

  /// Claims to be the compositor until this client ends.
  void claimCompositing();

  /// Shows a panel of this client; the window manager may take a moment.
  xcb_window_t showDock(const Geometry& place);

  // Actions on another program's window. Do not wait.

  /// The first two go through the window manager, as in a pager.
  void close(xcb_window_t window);
  void moveToDesktop(xcb_window_t window, std::uint32_t index);
  /// Makes the server ignore requests to map windows, as if the window manager missed them.
  void ignoreRequests(bool ignore);
  void unmap(xcb_window_t window);
  void raise(xcb_window_t window);
  void resize(xcb_window_t window, std::uint16_t width, std::uint16_t height);
  void reparent(xcb_window_t window, xcb_window_t parent);
  void destroy(xcb_window_t window);
  /// Ends the connection that the window belongs to.
  void kill(xcb_window_t window);
  [[nodiscard]] bool isViewable(xcb_window_t window);

  // The user's input, as from devices.

  void clickButton(std::uint8_t button);
  /// Presses a key without a meaning.
  void pressKey();
  void movePointer(std::int16_t x, std::int16_t y);
  /// Moves the pointer like a program, without a device.
  void warpPointer(std::int16_t x, std::int16_t y);

  [[nodiscard]] xcb_window_t root() const;
  /// Windows of any depth whose WM_WINDOW_ROLE is the given one.
  [[nodiscard]] std::vector<xcb_window_t> windowsOfRole(std::string_view role);

  [[nodiscard]] bool isMapped(xcb_window_t window);
  /// Returns whether window managers ignore the window.
  [[nodiscard]] bool isOverrideRedirect(xcb_window_t window);
  /// Returns the window that has the keyboard focus.
  [[nodiscard]] xcb_window_t focus();
  /// Returns the children of the root window, back to front.
  [[nodiscard]] std::vector<xcb_window_t> stack();
  /// Returns the one that would receive a click; none over the bare root window.
  [[nodiscard]] xcb_window_t windowUnderPointer();

  // Properties by name, unconverted.

  struct Property {
    std::string type;
    int format = 0;
    /// The bytes, in the units of the format.
    std::string bytes;
  };
  [[nodiscard]] std::optional<Property> property(xcb_window_t window, std::string_view name);
  /// Returns the value of any property with 32-bit units; else empty.
  [[nodiscard]] std::vector<std::uint32_t> cardinals(xcb_window_t window, std::string_view name);
  /// Returns the names of the atoms in the property.
  [[nodiscard]] std::vector<std::string> atoms(xcb_window_t window, std::string_view name);
  void setProperty(xcb_window_t window, std::string_view name, const Property& property);
  void setAtom(xcb_window_t window, std::string_view name, std::string_view value);
  void setWindow(xcb_window_t window, std::string_view name, xcb_window_t value);
  void deleteProperty(xcb_window_t window, std::string_view name);
  /// Returns the names in _NET_DESKTOP_NAMES.
  [[nodiscard]] std::vector<std::string> desktopNames();

  /// Returns the frame relative to the root window.
  [[nodiscard]] Geometry geometry(xcb_window_t window);

 private:
  /// Returns whether the window manager accepts a test window, which is then removed.
  bool takesAWindow();
  void fake(std::uint8_t type, std::uint8_t detail, std::int16_t x = 0, std::int16_t y = 0);
  void tellWindowManager(std::string_view message, std::uint32_t value);
  /// Returns a screen mode of that size; creates it if there is none.
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
