// A crowded desktop for script/footprint --scale: makes windows that no window manager manages,
// then switches desktops at a steady rate and measures how long after the last switch the strip
// has its name and its label is shown.
//
// Usage: crowd_program WINDOWS SWITCHES RATE
//
// Prints "ready" when the windows are there, and starts at the first line on standard input.
// Then prints, in milliseconds: how long the window manager took for the last switch after it was
// asked, and how long after that the strip had the desktop's name and the label was on the screen.

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using XcbPtr = std::unique_ptr<T, Free>;

class Crowd {
 public:
  Crowd() : xcb_(xcb_connect(nullptr, nullptr)) {
    xcb_ewmh_init_atoms_replies(&ewmh_, xcb_ewmh_init_atoms(xcb_, &ewmh_), nullptr);
    screen_ = ewmh_.screens[0];
    constexpr std::string_view kRole = "WM_WINDOW_ROLE";
    const XcbPtr<xcb_intern_atom_reply_t> role(xcb_intern_atom_reply(
        xcb_, xcb_intern_atom_unchecked(xcb_, 0, kRole.size(), kRole.data()), nullptr));
    if (role) role_ = role->atom;
  }

  void makeWindows(std::uint32_t count) {
    // No window manager could manage as many windows and switch as fast.
    constexpr std::uint32_t kUnmanaged = 1;
    for (std::uint32_t i = 0; i < count; ++i) {
      const xcb_window_t window = xcb_generate_id(xcb_);
      xcb_create_window(xcb_, XCB_COPY_FROM_PARENT, window, screen_->root, 0, 0, 300, 200, 0,
                        XCB_WINDOW_CLASS_INPUT_OUTPUT, screen_->root_visual,
                        XCB_CW_OVERRIDE_REDIRECT, &kUnmanaged);
      xcb_map_window(xcb_, window);
    }
    // Waits for the server.
    number(ewmh_._NET_NUMBER_OF_DESKTOPS, 0);
  }

  void run(int switches, int rate) {
    const std::uint32_t desktops = number(ewmh_._NET_NUMBER_OF_DESKTOPS, 1);
    const auto period = std::chrono::nanoseconds(std::chrono::seconds(1)) / rate;
    const xcb_window_t strip = stripWithin(screen_->root);
    const Clock::time_point begin = Clock::now();
    for (int i = 1; i <= switches; ++i) {
      std::this_thread::sleep_until(begin + i * period);
      // Far apart, back and forth.
      last_ = static_cast<std::uint32_t>(i) * 7 % desktops;
      xcb_ewmh_request_change_current_desktop(&ewmh_, 0, last_, XCB_CURRENT_TIME);
      xcb_flush(xcb_);
    }
    const Clock::time_point asked = Clock::now();
    waitFor([this] { return number(ewmh_._NET_CURRENT_DESKTOP, last_ + 1) == last_; });
    const Clock::time_point switched = Clock::now();
    const std::string name = "Desktop " + std::to_string(last_ + 1);
    waitFor([&] { return text(strip, ewmh_._NET_WM_NAME) == name; });
    const Clock::time_point named = Clock::now();
    waitFor([&] { return isLabelShown(name); });
    const Clock::time_point shown = Clock::now();
    using Milliseconds = std::chrono::duration<double, std::milli>;
    std::printf("%.1f %.1f %.1f\n", Milliseconds(switched - asked).count(),
                Milliseconds(named - switched).count(), Milliseconds(shown - switched).count());
  }

 private:
  template <typename Condition>
  static void waitFor(const Condition& condition) {
    const Clock::time_point end = Clock::now() + std::chrono::seconds(60);
    while (!condition() && Clock::now() < end) {
      std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
  }

  XcbPtr<xcb_get_property_reply_t> property(xcb_window_t window, xcb_atom_t name) const {
    return XcbPtr<xcb_get_property_reply_t>(xcb_get_property_reply(
        xcb_, xcb_get_property_unchecked(xcb_, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 8192),
        nullptr));
  }

  std::uint32_t number(xcb_atom_t name, std::uint32_t otherwise) const {
    const auto reply = property(screen_->root, name);
    if (!reply || reply->format != 32 || reply->value_len == 0) return otherwise;
    std::uint32_t value = 0;
    std::memcpy(&value, xcb_get_property_value(reply.get()), sizeof(value));
    return value;
  }

  std::string text(xcb_window_t window, xcb_atom_t name) const {
    const auto reply = property(window, name);
    if (!reply) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
  }

  [[nodiscard]] XcbPtr<xcb_query_tree_reply_t> tree(xcb_window_t parent) const {
    return XcbPtr<xcb_query_tree_reply_t>(
        xcb_query_tree_reply(xcb_, xcb_query_tree_unchecked(xcb_, parent), nullptr));
  }

  /// Returns the strip, of any depth; none if there is none.
  xcb_window_t stripWithin(xcb_window_t parent) const {
    const auto tree = this->tree(parent);
    if (!tree) return XCB_NONE;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = xcb_query_tree_children_length(tree.get()) - 1; i >= 0; --i) {
      if (text(children[i], role_) == "status-item") return children[i];
      const xcb_window_t found = stripWithin(children[i]);
      if (found != XCB_NONE) return found;
    }
    return XCB_NONE;
  }

  /// Returns whether a label with that name is among the topmost windows and on the screen.
  bool isLabelShown(const std::string& name) const {
    constexpr int kTopmost = 8;
    const auto tree = this->tree(screen_->root);
    if (!tree) return false;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    const int count = xcb_query_tree_children_length(tree.get());
    for (int i = std::max(count - kTopmost, 0); i < count; ++i) {
      if (text(children[i], role_) != "label") continue;
      if (text(children[i], ewmh_._NET_WM_NAME) != name) continue;
      const XcbPtr<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
          xcb_, xcb_get_window_attributes_unchecked(xcb_, children[i]), nullptr));
      if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE) return true;
    }
    return false;
  }

  xcb_connection_t* xcb_;
  xcb_ewmh_connection_t ewmh_{};
  xcb_screen_t* screen_ = nullptr;
  xcb_atom_t role_ = XCB_NONE;
  std::uint32_t last_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  Crowd crowd;
  crowd.makeWindows(static_cast<std::uint32_t>(std::atoi(argv[1])));
  std::puts("ready");
  std::fflush(stdout);
  if (std::getchar() == EOF) return 1;
  crowd.run(std::atoi(argv[2]), std::atoi(argv[3]));
  return 0;
}
