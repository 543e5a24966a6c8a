#include "platform/linux/support/X11Client.h"

#include <poll.h>
#include <xcb/xcb_icccm.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace vembrix {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

// The patience with a busy machine; waits end as soon as the effect is seen.
constexpr std::chrono::milliseconds kPatience{30000};

}  // namespace

X11Client::X11Client(const std::string& display) {
  xcb_connection_t* connection = xcb_connect(display.c_str(), &screen_);
  if (xcb_connection_has_error(connection) != 0) throw std::runtime_error("no display " + display);
  xcb_ewmh_init_atoms_replies(&ewmh_, xcb_ewmh_init_atoms(connection, &ewmh_), nullptr);
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(connection, root(), XCB_CW_EVENT_MASK, &events);
}

X11Client::~X11Client() {
  xcb_disconnect(ewmh_.connection);
  xcb_ewmh_connection_wipe(&ewmh_);
}

xcb_window_t X11Client::root() const {
  return ewmh_.screens[screen_]->root;
}

bool X11Client::waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    pollfd socket{xcb_get_file_descriptor(ewmh_.connection), POLLIN, 0};
    // The time limit covers effects without an event, and events that came with a reply.
    poll(&socket, 1, 10);
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(ewmh_.connection)}) {
    }
  }
  return true;
}

bool X11Client::demand(std::string_view property, std::uint32_t value) {
  // A window manager that is still starting may miss a message.
  constexpr int kAttempts = 300;
  for (int i = 0; i < kAttempts; ++i) {
    tellWindowManager(property, value);
    const auto isSo = [&] {
      return cardinals(root(), property) == std::vector<std::uint32_t>{value};
    };
    if (waitUntil(isSo, kPatience / kAttempts)) return true;
  }
  return false;
}

bool X11Client::waitForWindowManager() {
  const auto announcesItself = [this] {
    const auto claim = cardinals(root(), "_NET_SUPPORTING_WM_CHECK");
    return claim.size() == 1 && cardinals(claim[0], "_NET_SUPPORTING_WM_CHECK") == claim &&
           !cardinals(root(), "_NET_NUMBER_OF_DESKTOPS").empty() &&
           !cardinals(root(), "_NET_CURRENT_DESKTOP").empty();
  };
  // A starting window manager misses windows that are mapped between its announcement and the end
  // of its start.
  return waitUntil(announcesItself, kPatience) &&
         waitUntil([this] { return takesAWindow(); }, kPatience);
}

bool X11Client::takesAWindow() {
  constexpr std::chrono::milliseconds kPatienceForOne{200};
  xcb_connection_t* xcb = ewmh_.connection;
  const xcb_window_t window = xcb_generate_id(xcb);
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
  // A dock takes neither the focus nor space from others.
  xcb_ewmh_set_wm_window_type(&ewmh_, window, 1, &ewmh_._NET_WM_WINDOW_TYPE_DOCK);
  xcb_map_window(xcb, window);
  const bool isTaken =
      waitUntil([&] { return !cardinals(window, "WM_STATE").empty(); }, kPatienceForOne);
  xcb_destroy_window(xcb, window);
  const auto isForgotten = [&] {
    return !std::ranges::count(cardinals(root(), "_NET_CLIENT_LIST"), window);
  };
  return waitUntil(isForgotten, kPatience) && isTaken;
}

void X11Client::tellWindowManager(std::string_view message, std::uint32_t value) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = root();
  event.type = atom(message);
  event.data.data32[0] = value;
  xcb_send_event(ewmh_.connection, 0, root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&event));
  xcb_flush(ewmh_.connection);
}

bool X11Client::setDesktopCount(std::uint32_t count) {
  if (count != 0) return demand("_NET_NUMBER_OF_DESKTOPS", count);
  setProperty(root(), "_NET_NUMBER_OF_DESKTOPS", {"CARDINAL", 32, std::string(4, '\0')});
  return true;
}

bool X11Client::goToDesktop(std::uint32_t index) {
  return demand("_NET_CURRENT_DESKTOP", index);
}

xcb_randr_mode_t X11Client::modeOfSize(
    const xcb_randr_get_screen_resources_current_reply_t& resources, std::uint16_t width,
    std::uint16_t height) {
  const xcb_randr_mode_info_t* modes = xcb_randr_get_screen_resources_current_modes(&resources);
  const xcb_randr_mode_info_t* end =
      modes + xcb_randr_get_screen_resources_current_modes_length(&resources);
  const auto found = std::find_if(modes, end, [&](const xcb_randr_mode_info_t& mode) {
    return mode.width == width && mode.height == height;
  });
  if (found != end) return found->id;
  const std::string name = std::to_string(width) + "x" + std::to_string(height);
  xcb_randr_mode_info_t info{};
  info.width = width;
  info.height = height;
  info.name_len = static_cast<std::uint16_t>(name.size());
  const auto request = xcb_randr_create_mode(ewmh_.connection, root(), info,
                                             static_cast<std::uint32_t>(name.size()), name.data());
  const Reply<xcb_randr_create_mode_reply_t> reply{
      xcb_randr_create_mode_reply(ewmh_.connection, request, nullptr)};
  return reply ? reply->mode : xcb_randr_mode_t{XCB_NONE};
}

bool X11Client::resizeScreen(std::uint16_t width, std::uint16_t height) {
  xcb_connection_t* xcb = ewmh_.connection;
  const Reply<xcb_randr_get_screen_resources_current_reply_t> resources{
      xcb_randr_get_screen_resources_current_reply(
          xcb, xcb_randr_get_screen_resources_current(xcb, root()), nullptr)};
  if (!resources || resources->num_crtcs == 0 || resources->num_outputs == 0) return false;
  const xcb_randr_crtc_t crtc = xcb_randr_get_screen_resources_current_crtcs(resources.get())[0];
  const xcb_randr_output_t output =
      xcb_randr_get_screen_resources_current_outputs(resources.get())[0];
  const auto time = resources->config_timestamp;

  const xcb_randr_mode_t mode = modeOfSize(*resources, width, height);
  if (mode == XCB_NONE) return false;
  xcb_randr_add_output_mode(xcb, output, mode);
  const auto configure = [&](xcb_randr_mode_t to) {
    const auto cookie = xcb_randr_set_crtc_config(xcb, crtc, XCB_CURRENT_TIME, time, 0, 0, to,
                                                  XCB_RANDR_ROTATION_ROTATE_0, 1, &output);
    const Reply<xcb_randr_set_crtc_config_reply_t> reply{
        xcb_randr_set_crtc_config_reply(xcb, cookie, nullptr)};
    return reply && reply->status == XCB_RANDR_SET_CONFIG_SUCCESS;
  };
  // Millimetres at 96 dots per inch.
  const auto millimetres = [](std::uint16_t pixels) { return pixels * 254U / 960U; };
  // The contents of the screen must fit its size at any time.
  const Geometry former = geometry(root());
  xcb_randr_set_screen_size(xcb, root(), std::max<std::uint16_t>(width, former.width),
                            std::max<std::uint16_t>(height, former.height), millimetres(width),
                            millimetres(height));
  if (!configure(mode)) return false;
  xcb_randr_set_screen_size(xcb, root(), width, height, millimetres(width), millimetres(height));
  return geometry(root()) == Geometry{0, 0, width, height};
}

// The user

bool X11Client::showWindow(const std::string& windowClass, std::uint16_t width,
                           std::uint16_t height) {
  xcb_connection_t* xcb = ewmh_.connection;
  const xcb_window_t window = xcb_generate_id(xcb);
  const std::uint32_t color = ewmh_.screens[screen_]->white_pixel;
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, root(), 0, 0, width, height, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &color);
  std::string classes = windowClass;
  classes.push_back('\0');
  classes.append(windowClass).push_back('\0');
  setProperty(window, "WM_CLASS", {"STRING", 8, classes});
  // Without a frame, the size is the window's own, as on other systems.
  constexpr std::array<std::uint32_t, 5> kUndecorated{2, 0, 0, 0, 0};
  const xcb_atom_t hintsAtom = atom("_MOTIF_WM_HINTS");
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, hintsAtom, hintsAtom, 32,
                      kUndecorated.size(), kUndecorated.data());
  xcb_size_hints_t hints{};
  xcb_icccm_size_hints_set_position(&hints, 1, 0, 0);
  xcb_icccm_size_hints_set_min_size(&hints, width, height);
  xcb_icccm_set_wm_normal_hints(xcb, window, &hints);
  const auto isShown = [&] {
    return cardinals(root(), "_NET_ACTIVE_WINDOW") == std::vector<std::uint32_t>{window} &&
           geometry(window) == Geometry{0, 0, width, height};
  };
  xcb_map_window(xcb, window);
  xcb_flush(xcb);
  return waitUntil(isShown, kPatience);
}

void X11Client::claimCompositing() {
  const xcb_window_t owner = xcb_generate_id(ewmh_.connection);
  xcb_create_window(ewmh_.connection, XCB_COPY_FROM_PARENT, owner, root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_set_selection_owner(ewmh_.connection, owner, ewmh_._NET_WM_CM_Sn[screen_], XCB_CURRENT_TIME);
  xcb_flush(ewmh_.connection);
}

void X11Client::destroy(xcb_window_t window) {
  xcb_destroy_window(ewmh_.connection, window);
  xcb_flush(ewmh_.connection);
}

void X11Client::kill(xcb_window_t window) {
  xcb_kill_client(ewmh_.connection, window);
  xcb_flush(ewmh_.connection);
}

xcb_window_t X11Client::showDock(const Geometry& place) {
  xcb_connection_t* xcb = ewmh_.connection;
  const xcb_window_t window = xcb_generate_id(xcb);
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, root(), static_cast<std::int16_t>(place.x),
                    static_cast<std::int16_t>(place.y), static_cast<std::uint16_t>(place.width),
                    static_cast<std::uint16_t>(place.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_ewmh_set_wm_window_type(&ewmh_, window, 1, &ewmh_._NET_WM_WINDOW_TYPE_DOCK);
  xcb_size_hints_t hints{};
  xcb_icccm_size_hints_set_position(&hints, 1, place.x, place.y);
  xcb_icccm_set_wm_normal_hints(xcb, window, &hints);
  xcb_map_window(xcb, window);
  xcb_flush(xcb);
  return window;
}

void X11Client::close(xcb_window_t window) {
  xcb_ewmh_request_close_window(&ewmh_, screen_, window, XCB_CURRENT_TIME,
                                XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER);
  xcb_flush(ewmh_.connection);
}

void X11Client::moveToDesktop(xcb_window_t window, std::uint32_t index) {
  xcb_ewmh_request_change_wm_desktop(&ewmh_, screen_, window, index,
                                     XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER);
  xcb_flush(ewmh_.connection);
}

void X11Client::ignoreRequests(bool ignore) {
  const std::uint32_t events =
      ignore ? XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT : XCB_EVENT_MASK_NO_EVENT;
  xcb_change_window_attributes(ewmh_.connection, root(), XCB_CW_EVENT_MASK, &events);
  xcb_flush(ewmh_.connection);
}

void X11Client::unmap(xcb_window_t window) {
  xcb_unmap_window(ewmh_.connection, window);
  xcb_flush(ewmh_.connection);
}

void X11Client::resize(xcb_window_t window, std::uint16_t width, std::uint16_t height) {
  const std::array<std::uint32_t, 2> size{width, height};
  xcb_configure_window(ewmh_.connection, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       size.data());
  xcb_flush(ewmh_.connection);
}

void X11Client::raise(xcb_window_t window) {
  const std::uint32_t mode = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(ewmh_.connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
  xcb_flush(ewmh_.connection);
}

void X11Client::reparent(xcb_window_t window, xcb_window_t parent) {
  xcb_reparent_window(ewmh_.connection, window, parent, 0, 0);
  xcb_flush(ewmh_.connection);
}

bool X11Client::isViewable(xcb_window_t window) {
  const Reply<xcb_get_window_attributes_reply_t> reply{xcb_get_window_attributes_reply(
      ewmh_.connection, xcb_get_window_attributes_unchecked(ewmh_.connection, window), nullptr)};
  return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

void X11Client::fake(std::uint8_t type, std::uint8_t detail, std::int16_t x, std::int16_t y) {
  xcb_test_fake_input(ewmh_.connection, type, detail, XCB_CURRENT_TIME, root(), x, y, 0);
  xcb_flush(ewmh_.connection);
}

void X11Client::clickButton(std::uint8_t button) {
  fake(XCB_BUTTON_PRESS, button);
  fake(XCB_BUTTON_RELEASE, button);
}

void X11Client::pressKey() {
  // The usual key code of the right Shift key.
  constexpr std::uint8_t kKey = 62;
  fake(XCB_KEY_PRESS, kKey);
  fake(XCB_KEY_RELEASE, kKey);
}

void X11Client::movePointer(std::int16_t x, std::int16_t y) {
  fake(XCB_MOTION_NOTIFY, 0, x, y);
}

void X11Client::warpPointer(std::int16_t x, std::int16_t y) {
  xcb_warp_pointer(ewmh_.connection, XCB_WINDOW_NONE, root(), 0, 0, 0, 0, x, y);
  xcb_flush(ewmh_.connection);
}

// Windows and properties

std::vector<xcb_window_t> X11Client::windowsOfRole(std::string_view role) {
  std::vector<xcb_window_t> found;
  collectWindows(root(), role, found);
  return found;
}

void X11Client::collectWindows(xcb_window_t parent, std::string_view role,
                               std::vector<xcb_window_t>& found) {
  const Reply<xcb_query_tree_reply_t> tree{
      xcb_query_tree_reply(ewmh_.connection, xcb_query_tree(ewmh_.connection, parent), nullptr)};
  if (!tree) return;
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
    const auto value = property(children[i], "WM_WINDOW_ROLE");
    if (value && value->bytes == role) found.push_back(children[i]);
    collectWindows(children[i], role, found);
  }
}

bool X11Client::isMapped(xcb_window_t window) {
  const Reply<xcb_get_window_attributes_reply_t> reply{xcb_get_window_attributes_reply(
      ewmh_.connection, xcb_get_window_attributes(ewmh_.connection, window), nullptr)};
  return reply && reply->map_state != XCB_MAP_STATE_UNMAPPED;
}

bool X11Client::isOverrideRedirect(xcb_window_t window) {
  const Reply<xcb_get_window_attributes_reply_t> reply{xcb_get_window_attributes_reply(
      ewmh_.connection, xcb_get_window_attributes(ewmh_.connection, window), nullptr)};
  return reply && reply->override_redirect != 0;
}

xcb_window_t X11Client::focus() {
  const Reply<xcb_get_input_focus_reply_t> reply{
      xcb_get_input_focus_reply(ewmh_.connection, xcb_get_input_focus(ewmh_.connection), nullptr)};
  return reply ? reply->focus : xcb_window_t{XCB_NONE};
}

std::vector<xcb_window_t> X11Client::stack() {
  const Reply<xcb_query_tree_reply_t> tree{
      xcb_query_tree_reply(ewmh_.connection, xcb_query_tree(ewmh_.connection, root()), nullptr)};
  if (!tree) return {};
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  return {children, children + xcb_query_tree_children_length(tree.get())};
}

xcb_window_t X11Client::windowUnderPointer() {
  const Reply<xcb_query_pointer_reply_t> reply{xcb_query_pointer_reply(
      ewmh_.connection, xcb_query_pointer(ewmh_.connection, root()), nullptr)};
  return reply ? reply->child : xcb_window_t{XCB_NONE};
}

X11Client::Geometry X11Client::geometry(xcb_window_t window) {
  const Reply<xcb_get_geometry_reply_t> size{xcb_get_geometry_reply(
      ewmh_.connection, xcb_get_geometry(ewmh_.connection, window), nullptr)};
  const Reply<xcb_translate_coordinates_reply_t> corner{xcb_translate_coordinates_reply(
      ewmh_.connection, xcb_translate_coordinates(ewmh_.connection, window, root(), 0, 0),
      nullptr)};
  if (!size || !corner) return {};
  return {corner->dst_x, corner->dst_y, size->width, size->height};
}

xcb_atom_t X11Client::atom(std::string_view name) {
  const auto cookie =
      xcb_intern_atom(ewmh_.connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const Reply<xcb_intern_atom_reply_t> reply{
      xcb_intern_atom_reply(ewmh_.connection, cookie, nullptr)};
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::string X11Client::atomName(xcb_atom_t atom) {
  const Reply<xcb_get_atom_name_reply_t> reply{xcb_get_atom_name_reply(
      ewmh_.connection, xcb_get_atom_name(ewmh_.connection, atom), nullptr)};
  if (!reply) return {};
  return {xcb_get_atom_name_name(reply.get()),
          static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

}  // namespace vembrix
