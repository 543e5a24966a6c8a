#include "platform/linux/x11/WindowFacts.h"

#include <QString>
#include <algorithm>
#include <fstream>
#include <string_view>
#include <vector>

namespace vembrix {
namespace {

/// The window classes of programs that show all windows or desktops at once, in a window over the
/// whole screen. Window managers that draw such an overview themselves have no window for it.
constexpr std::string_view kOverviewClasses[] = {"Kompose", "Skippy", "skippy-xd", "xfdashboard",
                                                 "Xfdashboard"};

/// The most frames that window managers put around each other.
constexpr int kMaxFrames = 3;
/// The most children of a frame. Frames have dozens, for borders and buttons, but all below the
/// program's own window.
constexpr std::size_t kMaxSiblings = 64;

struct WindowClass {
  std::string instance;
  std::string name;
};

/// Asks for the window class. Without libxcb-icccm, which reads beyond the end of a text that is
/// not terminated by NUL.
xcb_get_property_cookie_t askForClass(xcb_connection_t* xcb, xcb_window_t window) {
  constexpr std::uint32_t kWords = 256;
  return xcb_get_property_unchecked(xcb, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, kWords);
}

std::optional<WindowClass> windowClass(xcb_connection_t* xcb, xcb_get_property_cookie_t cookie) {
  const XcbPtr<xcb_get_property_reply_t> reply{xcb_get_property_reply(xcb, cookie, nullptr)};
  if (!reply || reply->type != XCB_ATOM_STRING || reply->format != 8) return std::nullopt;
  const std::string_view value(
      static_cast<const char*>(xcb_get_property_value(reply.get())),
      static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
  const auto text = [](std::string_view latin1) {
    return QString::fromLatin1(latin1.data(), static_cast<qsizetype>(latin1.size())).toStdString();
  };
  const std::string_view instance = value.substr(0, value.find('\0'));
  std::string_view name = value.substr(std::min(instance.size() + 1, value.size()));
  name = name.substr(0, name.find('\0'));
  return WindowClass{text(instance), text(name)};
}

std::string processName(std::uint32_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/comm");
  std::string name;
  std::getline(file, name);
  return name;
}

std::string ownerName(const std::optional<WindowClass>& itsClass, std::uint32_t process) {
  if (itsClass) {
    for (const std::string& name : {itsClass->name, itsClass->instance}) {
      if (std::ranges::find(kOverviewClasses, name) != std::end(kOverviewClasses)) return "Dock";
    }
    if (!itsClass->name.empty()) return itsClass->name;
    if (!itsClass->instance.empty()) return itsClass->instance;
  }
  return process != 0 ? processName(process) : std::string();
}

bool isDesktopElement(xcb_ewmh_connection_t* ewmh, xcb_get_property_cookie_t cookie) {
  xcb_ewmh_get_atoms_reply_t types{};
  if (xcb_ewmh_get_wm_window_type_reply(ewmh, cookie, &types, nullptr) == 0) return false;
  xcb_atom_t* const end = types.atoms + types.atoms_len;
  const bool found = std::find(types.atoms, end, ewmh->_NET_WM_WINDOW_TYPE_DESKTOP) != end;
  xcb_ewmh_get_atoms_reply_wipe(&types);
  return found;
}

/// Returns the children of a window, front to back.
std::vector<xcb_window_t> childrenOf(xcb_connection_t* xcb, xcb_window_t window) {
  const XcbPtr<xcb_query_tree_reply_t> tree{
      xcb_query_tree_reply(xcb, xcb_query_tree_unchecked(xcb, window), nullptr)};
  if (!tree) return {};
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  const auto count = static_cast<std::size_t>(xcb_query_tree_children_length(tree.get()));
  std::vector<xcb_window_t> result(children, children + count);
  std::ranges::reverse(result);
  return result;
}

/// Returns the first window that has a class; XCB_WINDOW_NONE if none has.
xcb_window_t firstWithClass(xcb_connection_t* xcb, const std::vector<xcb_window_t>& windows) {
  std::vector<xcb_get_property_cookie_t> cookies;
  cookies.reserve(windows.size());
  for (const xcb_window_t window : windows) {
    cookies.push_back(askForClass(xcb, window));
  }
  // Takes every answer, needed or not.
  xcb_window_t found = XCB_WINDOW_NONE;
  for (std::size_t i = 0; i < windows.size(); ++i) {
    if (windowClass(xcb, cookies[i]) && found == XCB_WINDOW_NONE) found = windows[i];
  }
  return found;
}

}  // namespace

WindowFacts readWindowFacts(X11Connection& connection, xcb_window_t window) {
  xcb_connection_t* xcb = connection.xcb();
  xcb_ewmh_connection_t* ewmh = connection.ewmh();
  // Sends all queries before it reads the answers: one round trip.
  const auto attributesCookie = xcb_get_window_attributes_unchecked(xcb, window);
  const auto classCookie = askForClass(xcb, window);
  const auto desktopCookie = xcb_ewmh_get_wm_desktop_unchecked(ewmh, window);
  const auto typeCookie = xcb_ewmh_get_wm_window_type_unchecked(ewmh, window);
  const auto processCookie = xcb_ewmh_get_wm_pid_unchecked(ewmh, window);

  WindowFacts facts;
  const XcbPtr<xcb_get_window_attributes_reply_t> attributes{
      xcb_get_window_attributes_reply(xcb, attributesCookie, nullptr)};
  facts.isInvisible = attributes && attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
  const auto itsClass = windowClass(xcb, classCookie);
  std::uint32_t value = 0;
  if (xcb_ewmh_get_wm_desktop_reply(ewmh, desktopCookie, &value, nullptr) != 0) {
    facts.desktop = value;
  }
  facts.isDesktopElement = isDesktopElement(ewmh, typeCookie);
  value = 0;
  xcb_ewmh_get_wm_pid_reply(ewmh, processCookie, &value, nullptr);
  facts.owner = ownerName(itsClass, value);
  return facts;
}

xcb_window_t clientWithin(X11Connection& connection, xcb_window_t window) {
  xcb_connection_t* xcb = connection.xcb();
  std::vector<xcb_window_t> level{window};
  for (int depth = 0; depth <= kMaxFrames && !level.empty(); ++depth) {
    const xcb_window_t found = firstWithClass(xcb, level);
    if (found != XCB_WINDOW_NONE) return found;
    std::vector<xcb_window_t> next;
    for (const xcb_window_t parent : level) {
      const auto children = childrenOf(xcb, parent);
      next.insert(next.end(), children.begin(), children.end());
    }
    next.resize(std::min(next.size(), kMaxSiblings));
    level = std::move(next);
  }
  return window;
}

}  // namespace vembrix
