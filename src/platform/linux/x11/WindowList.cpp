#include "platform/linux/x11/WindowList.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/linux/support/ScreenCoordinates.h"
#include "platform/linux/support/XcbEvent.h"
#include "platform/linux/x11/WindowFacts.h"
#include "platform/linux/x11/WindowHints.h"
#include "platform/linux/x11/X11Connection.h"

namespace vembrix {
namespace {

/// Returns the rectangle of a window with its border.
template <typename Geometry>
QRect outerRect(const Geometry& geometry) {
  return {geometry.x, geometry.y, geometry.width + 2 * geometry.border_width,
          geometry.height + 2 * geometry.border_width};
}

/// Returns half of the size of the smallest screen, in pixels.
QSize halfOfSmallestScreen() {
  QSize smallest;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QSize size = nativeGeometry(*screen).size();
    smallest = smallest.isValid() ? smallest.boundedTo(size) : size;
  }
  return smallest / 2;
}

}  // namespace

WindowList::WindowList(X11Desktop& desktop)
    : desktop_(desktop),
      events_(desktop.events()),
      connection_(events_.connection()),
      listening_(events_.listen({.event = [this](const auto& event) { note(event); },
                                 .batchEnd = [this] { refresh(); }})) {
  readAll();
}

void WindowList::readAll() {
  xcb_connection_t* xcb = connection_.xcb();
  // Selected before the first query, so that no change is missed.
  events_.select(connection_.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
  const XcbPtr<xcb_query_tree_reply_t> tree{
      xcb_query_tree_reply(xcb, xcb_query_tree_unchecked(xcb, connection_.root()), nullptr)};
  if (!tree) return;
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  const int count = xcb_query_tree_children_length(tree.get());
  // Sends all queries before it reads the answers: one round trip.
  std::vector<std::pair<xcb_get_geometry_cookie_t, xcb_get_window_attributes_cookie_t>> cookies;
  cookies.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    cookies.emplace_back(xcb_get_geometry_unchecked(xcb, children[i]),
                         xcb_get_window_attributes_unchecked(xcb, children[i]));
  }
  for (int i = 0; i < count; ++i) {
    const auto& cookie = cookies[static_cast<std::size_t>(i)];
    const XcbPtr<xcb_get_geometry_reply_t> geometry{
        xcb_get_geometry_reply(xcb, cookie.first, nullptr)};
    const XcbPtr<xcb_get_window_attributes_reply_t> attributes{
        xcb_get_window_attributes_reply(xcb, cookie.second, nullptr)};
    if (!geometry || !attributes) continue;
    add(children[i], outerRect(*geometry));
    setMapped(children[i], attributes->map_state != XCB_MAP_STATE_UNMAPPED);
  }
  refresh();
  events_.readSoon();
}

// Events

void WindowList::note(const xcb_generic_event_t& event) {
  const xcb_window_t root = connection_.root();
  switch (eventType(event)) {
    case XCB_CREATE_NOTIFY: {
      const auto& created = as<xcb_create_notify_event_t>(event);
      if (created.parent == root) add(created.window, outerRect(created));
      break;
    }
    case XCB_DESTROY_NOTIFY:
      remove(as<xcb_destroy_notify_event_t>(event).window);
      break;
    case XCB_MAP_NOTIFY: {
      const auto& mapped = as<xcb_map_notify_event_t>(event);
      if (mapped.event == root) setMapped(mapped.window, true);
      break;
    }
    case XCB_UNMAP_NOTIFY: {
      const auto& unmapped = as<xcb_unmap_notify_event_t>(event);
      if (unmapped.event == root) setMapped(unmapped.window, false);
      break;
    }
    case XCB_REPARENT_NOTIFY:
      noteReparenting(as<xcb_reparent_notify_event_t>(event));
      break;
    case XCB_CONFIGURE_NOTIFY:
      noteConfiguration(as<xcb_configure_notify_event_t>(event));
      break;
    case XCB_CIRCULATE_NOTIFY: {
      const auto& circulated = as<xcb_circulate_notify_event_t>(event);
      const bool toTop = circulated.place == XCB_PLACE_ON_TOP && !windows_.empty();
      restack(circulated.window, toTop ? windows_.back().id : xcb_window_t{XCB_WINDOW_NONE});
      break;
    }
    case XCB_PROPERTY_NOTIFY:
      noteProperty(as<xcb_property_notify_event_t>(event));
      break;
    default:
      // Includes errors: a window may disappear at any time.
      break;
  }
}

void WindowList::noteConfiguration(const xcb_configure_notify_event_t& event) {
  // For windows in frames, only creation and destruction matter.
  const auto window = find(event.window);
  if (window == windows_.end()) return;
  const QRect pixels = outerRect(event);
  if (window->pixels != pixels) {
    forgetAnswers(*window);
    window->pixels = pixels;
    hasNews_ = true;
    forgetAnswers(*window);
  }
  restack(event.window, event.above_sibling);
}

void WindowList::noteReparenting(const xcb_reparent_notify_event_t& event) {
  const xcb_window_t root = connection_.root();
  if (event.event == root) {
    remove(event.window);
    if (event.parent == root) {
      // A window that returns to the root has no event with its size. It is not mapped yet.
      xcb_connection_t* xcb = connection_.xcb();
      const XcbPtr<xcb_get_geometry_reply_t> geometry{
          xcb_get_geometry_reply(xcb, xcb_get_geometry_unchecked(xcb, event.window), nullptr)};
      if (geometry) add(event.window, outerRect(*geometry));
    }
  } else if (const auto frame = find(event.event); frame != windows_.end()) {
    frame->isStale = true;
    hasNews_ = true;
  }
}

void WindowList::noteProperty(const xcb_property_notify_event_t& event) {
  const xcb_ewmh_connection_t& atoms = *connection_.ewmh();
  const bool matters = event.atom == XCB_ATOM_WM_CLASS || event.atom == atoms._NET_WM_DESKTOP ||
                       event.atom == atoms._NET_WM_WINDOW_TYPE || event.atom == atoms._NET_WM_PID;
  if (!matters) return;
  const auto window = std::ranges::find_if(windows_, [&](const Window& candidate) {
    return candidate.id == event.window || candidate.client == event.window;
  });
  if (window == windows_.end()) return;
  window->isStale = true;
  hasNews_ = true;
}

void WindowList::setMapped(xcb_window_t id, bool isMapped) {
  const auto window = find(id);
  if (window == windows_.end() || window->isMapped == isMapped) return;
  window->isMapped = isMapped;
  hasNews_ = true;
  // Once a window was read, events report its changes, even while it is hidden. If it had no name
  // then, it may have one now.
  if (isMapped && window->owner.empty()) window->isStale = true;
  forgetAnswers(*window);
}

WindowList::Windows::iterator WindowList::find(xcb_window_t id) {
  return std::ranges::find(windows_, id, &Window::id);
}

void WindowList::add(xcb_window_t id, const QRect& pixels) {
  if (find(id) != windows_.end()) return;
  windows_.emplace_back();
  windows_.back().id = id;
  windows_.back().pixels = pixels;
}

void WindowList::remove(xcb_window_t id) {
  const auto window = find(id);
  if (window == windows_.end()) return;
  forgetAnswers(*window);
  windows_.erase(window);
}

void WindowList::restack(xcb_window_t id, xcb_window_t sibling) {
  const auto window = find(id);
  if (window == windows_.end() || sibling == id) return;
  const bool isBottom = window == windows_.begin();
  const xcb_window_t below = isBottom ? xcb_window_t{XCB_WINDOW_NONE} : std::prev(window)->id;
  if (below == sibling) return;
  forgetAnswers(*window);
  Window moved = std::move(*window);
  windows_.erase(window);
  const auto above = find(sibling);
  // An unknown sibling gives no position: the window goes to the bottom.
  const auto place = above == windows_.end() ? windows_.begin() : std::next(above);
  windows_.insert(place, std::move(moved));
}

// The properties of windows

void WindowList::refresh() {
  const QSize large = halfOfSmallestScreen();
  const bool isAnotherSize = std::exchange(large_, large) != large;
  if (isAnotherSize) answers_ = {};
  if (!std::exchange(hasNews_, false) && !isAnotherSize) return;
  for (Window& window : windows_) {
    if (!window.isMapped || !window.isStale || !isLarge(window)) continue;
    read(window);
    answers_ = {};
  }
}

bool WindowList::isLarge(const Window& window) const {
  return window.pixels.width() >= large_.width() && window.pixels.height() >= large_.height();
}

void WindowList::forgetAnswers(const Window& window) {
  // The next query must build the list again.
  if (isLarge(window)) answers_ = {};
}

void WindowList::read(Window& window) {
  window.isStale = false;
  // A frame may get its window after it is shown.
  events_.select(window.id, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
  window.client = clientWithin(connection_, window.id);
  if (window.client != window.id) events_.select(window.client, XCB_EVENT_MASK_PROPERTY_CHANGE);
  WindowFacts facts = readWindowFacts(connection_, window.client);
  window.owner = std::move(facts.owner);
  window.isDesktopElement = facts.isDesktopElement;
  window.isInvisible = facts.isInvisible;
  window.desktop = facts.desktop;
}

// Answers

PropertyList WindowList::list(std::uint32_t options) {
  const X11Desktop::SpaceID active = desktop_.activeSpace();
  if (std::exchange(answeredSpace_, active) != active) answers_ = {};
  const bool withDesktopElements = (options & WindowServer::excludeDesktopElements) == 0;
  std::optional<PropertyList>& answer = answers_[withDesktopElements ? 0 : 1];
  if (!answer) answer = build(withDesktopElements);
  return *answer;
}

bool WindowList::isOnScreen(const Window& window) const {
  if (!window.isMapped || window.isInvisible) return false;
  // Most window managers unmap the windows of other desktops, but those that compose the screen
  // themselves do not.
  if (!window.desktop || *window.desktop == kAllDesktops || answeredSpace_ == 0) return true;
  return X11Desktop::SpaceID{*window.desktop} + 1 == answeredSpace_;
}

PropertyList WindowList::build(bool withDesktopElements) const {
  PropertyList::Array list;
  for (auto window = windows_.rbegin(); window != windows_.rend(); ++window) {
    if (!isLarge(*window) || !isOnScreen(*window)) continue;
    if (window->isDesktopElement && !withDesktopElements) continue;
    const Rect bounds = windowBoundsOfPixels(window->pixels);
    PropertyList::Dictionary description{
        {"kCGWindowBounds", PropertyList::Dictionary{{"X", bounds.x},
                                                     {"Y", bounds.y},
                                                     {"Width", bounds.width},
                                                     {"Height", bounds.height}}}};
    if (!window->owner.empty()) description.emplace("kCGWindowOwnerName", window->owner);
    list.emplace_back(std::move(description));
  }
  return list;
}

}  // namespace vembrix
