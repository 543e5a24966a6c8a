#include "platform/linux/menubar/strip/X11Panels.h"

#include <xcb/xcbext.h>

#include <algorithm>
#include <array>
#include <span>
#include <tuple>
#include <utility>

#include "platform/linux/support/XcbEvent.h"

namespace vembrix {
namespace {

/// In 32-bit units. Users open fewer windows.
constexpr std::uint32_t kMaxList = 4096;
constexpr std::uint32_t kMaxTypes = 16;
constexpr std::uint32_t kMaxStates = 32;

/// The events that are followed on windows that matter.
constexpr std::uint32_t kFollowed =
    XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;

template <typename Reply>
const Reply& replyAs(const void* reply) {
  return *static_cast<const Reply*>(reply);
}

/// Returns the 32-bit units of a property of any type; empty if its units have another size.
std::span<const std::uint32_t> unitsOf(const void* reply) {
  if (!reply) return {};
  auto* property = static_cast<xcb_get_property_reply_t*>(const_cast<void*>(reply));
  if (property->format != 32) return {};
  return {static_cast<const std::uint32_t*>(xcb_get_property_value(property)), property->value_len};
}

xcb_get_property_cookie_t property(xcb_connection_t* xcb, xcb_window_t window, xcb_atom_t name,
                                   std::uint32_t length) {
  return xcb_get_property_unchecked(xcb, 0, window, name, XCB_ATOM_ANY, 0, length);
}

}  // namespace

X11Panels::X11Panels(X11EventReader& events, Handlers handlers)
    : handlers_(std::move(handlers)),
      events_(events),
      connection_(events.connection()),
      atoms_(*connection_.ewmh()),
      listening_(events.listen({.event = [this](const auto& event) { note(event); },
                                .answers = [this] { finishBatch(); }})) {
  // Selected before the first query, so that no change is missed.
  events_.select(connection_.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
  events_.readSoon();
}

X11Panels::~X11Panels() {
  for (const Question& question : questions_) {
    xcb_discard_reply(connection_.xcb(), question.sequence);
  }
}

void X11Panels::leaveOut(xcb_window_t window) {
  own_ = window;
  windows_.erase(window);
  announcedFullScreen_.reset();
}

void X11Panels::refresh() {
  stale_.windows = true;
  stale_.workArea = true;
  events_.readSoon();
}

void X11Panels::followFullScreen(bool follow) {
  followsFullScreen_ = follow;
  if (!follow || announcedFullScreen_) return;
  stale_.fullScreen = true;
  events_.readSoon();
}

void X11Panels::followStacking(bool follow) {
  if (std::exchange(followsStacking_, follow) == follow || !follow) return;
  stale_.stacking = true;
  events_.readSoon();
}

bool X11Panels::isBelowPanel(const QRect& area) const {
  const auto own = std::ranges::find(stacking_, own_);
  if (own == stacking_.end()) return false;
  return std::any_of(own, stacking_.end(), [&](xcb_window_t above) {
    const auto found = windows_.find(above);
    return found != windows_.end() && found->second.isPanel() && found->second.facts.isMapped &&
           found->second.facts.geometry.intersects(area);
  });
}

// Events

void X11Panels::note(const xcb_generic_event_t& event) {
  const int type = eventType(event);
  if (type == XCB_PROPERTY_NOTIFY) {
    noteProperty(as<xcb_property_notify_event_t>(event));
    return;
  }
  // The other events begin in the same way. The part about the parent is not used.
  const auto& structure = as<xcb_configure_notify_event_t>(event);
  const xcb_window_t window = structure.window;
  if (structure.event != window) return;
  const bool isGone = type == XCB_UNMAP_NOTIFY || type == XCB_DESTROY_NOTIFY;
  if (isGone && window == fullScreen_) {
    fullScreen_ = XCB_WINDOW_NONE;
    isNews_ = true;
  }
  switch (type) {
    case XCB_CONFIGURE_NOTIFY:
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
      unsettlePanel(window);
      break;
    case XCB_DESTROY_NOTIFY:
      if (windows_.erase(window) != 0) isNews_ = true;
      break;
    default:
      // Includes errors: a window may disappear at any time.
      break;
  }
}

void X11Panels::noteProperty(const xcb_property_notify_event_t& event) {
  if (event.window != connection_.root()) {
    const bool matters = event.atom == atoms_._NET_WM_STRUT_PARTIAL ||
                         event.atom == atoms_._NET_WM_STRUT ||
                         event.atom == atoms_._NET_WM_WINDOW_TYPE;
    if (matters) unsettlePanel(event.window);
    const bool isOfCovering = event.window == active_ || event.window == fullScreen_;
    if (isOfCovering && event.atom == atoms_._NET_WM_STATE) stale_.fullScreen = followsFullScreen_;
  } else if (event.atom == atoms_._NET_CLIENT_LIST) {
    stale_.windows = true;
  } else if (event.atom == atoms_._NET_WORKAREA) {
    // This is also how a built-in panel of the window manager shows that it has come or gone.
    stale_.workArea = true;
    stale_.windows = true;
  } else if (event.atom == atoms_._NET_CLIENT_LIST_STACKING) {
    stale_.stacking = followsStacking_;
  } else if (event.atom == atoms_._NET_ACTIVE_WINDOW) {
    stale_.fullScreen = followsFullScreen_;
  } else if (event.atom == atoms_._NET_SUPPORTING_WM_CHECK) {
    stale_.windows = true;
    if (handlers_.windowManagerChanged) handlers_.windowManagerChanged();
  }
}

void X11Panels::finishBatch() {
  if (!takeAnswers()) return;
  askWhatIsStale();
  if (questions_.empty() && std::exchange(isNews_, false)) announce();
}

// Questions and answers

template <typename Cookie>
void X11Panels::expect(Cookie cookie, Taker take) {
  questions_.push_back({cookie.sequence, std::move(take)});
}

bool X11Panels::takeAnswers() {
  xcb_connection_t* xcb = connection_.xcb();
  while (!questions_.empty()) {
    void* answer = nullptr;
    xcb_generic_error_t* refusal = nullptr;
    if (xcb_poll_for_reply(xcb, questions_.front().sequence, &answer, &refusal) == 0) return false;
    const XcbPtr<void> reply{answer};
    const XcbPtr<xcb_generic_error_t> error{refusal};
    // Taking an answer may add a query.
    const Taker take = std::move(questions_.front().take);
    questions_.pop_front();
    take(reply.get());
    isNews_ = true;
  }
  return true;
}

void X11Panels::askWhatIsStale() {
  const Stale stale = std::exchange(stale_, {});
  if (stale.workArea) askForWorkArea();
  if (stale.stacking) askForStacking();
  if (stale.fullScreen) askForFullScreen();
  if (stale.windows) askForWindows();
  for (const xcb_window_t id : std::exchange(unsettled_, {})) {
    if (find(id)) ask(id);
  }
}

void X11Panels::askForWorkArea() {
  expect(property(connection_.xcb(), connection_.root(), atoms_._NET_WORKAREA, 4),
         [this](const void* reply) {
           const auto area = unitsOf(reply);
           workArea_.reset();
           if (area.size() < 4) return;
           workArea_.emplace(static_cast<int>(area[0]), static_cast<int>(area[1]),
                             static_cast<int>(area[2]), static_cast<int>(area[3]));
         });
}

void X11Panels::askForStacking() {
  expect(
      property(connection_.xcb(), connection_.root(), atoms_._NET_CLIENT_LIST_STACKING, kMaxList),
      [this](const void* reply) {
        const auto list = unitsOf(reply);
        stacking_.assign(list.begin(), list.end());
        isRestacked_ = true;
      });
}

void X11Panels::askForFullScreen() {
  expect(property(connection_.xcb(), connection_.root(), atoms_._NET_ACTIVE_WINDOW, 1),
         [this](const void* reply) {
           const auto active = unitsOf(reply);
           active_ = active.empty() ? xcb_window_t{XCB_WINDOW_NONE} : active.front();
           if (fullScreen_ != XCB_WINDOW_NONE && fullScreen_ != active_) askForState(fullScreen_);
           if (active_ == XCB_WINDOW_NONE) return;
           events_.select(active_, kFollowed);
           askForState(active_);
         });
}

void X11Panels::askForState(xcb_window_t id) {
  expect(property(connection_.xcb(), id, atoms_._NET_WM_STATE, kMaxStates),
         [this, id](const void* reply) {
           const auto states = unitsOf(reply);
           const xcb_atom_t atom = atoms_._NET_WM_STATE_FULLSCREEN;
           const bool isFullScreen = std::ranges::find(states, atom) != states.end();
           if (isFullScreen && id == active_) fullScreen_ = id;
           if (!isFullScreen && id == fullScreen_) fullScreen_ = XCB_WINDOW_NONE;
         });
}

void X11Panels::askForWindows() {
  listNumber_ += 1;
  expect(property(connection_.xcb(), connection_.root(), atoms_._NET_CLIENT_LIST, kMaxList),
         [this](const void* reply) {
           const auto list = unitsOf(reply);
           listWindows(list.data(), list.size());
         });
  // Some window managers do not list panels.
  expect(xcb_query_tree_unchecked(connection_.xcb(), connection_.root()),
         [this](const void* reply) {
           if (reply) {
             const auto& tree = replyAs<xcb_query_tree_reply_t>(reply);
             listWindows(xcb_query_tree_children(&tree),
                         static_cast<std::size_t>(xcb_query_tree_children_length(&tree)));
           }
           forgetUnseen();
         });
}

void X11Panels::listWindows(const xcb_window_t* windows, std::size_t count) {
  for (const xcb_window_t id : std::span(windows, count)) {
    if (id == own_) continue;
    const auto [entry, isNew] = windows_.try_emplace(id);
    entry->second.lastSeen = listNumber_;
    if (isNew) unsettled_.push_back(id);
  }
}

void X11Panels::forgetUnseen() {
  std::erase_if(windows_,
                [this](const auto& entry) { return entry.second.lastSeen != listNumber_; });
}

void X11Panels::ask(xcb_window_t id) {
  Window& window = windows_[id];
  askForType(id);
  // Asks for the older property first, so that the newer one replaces it.
  askForStrut(id, atoms_._NET_WM_STRUT, 4);
  askForStrut(id, atoms_._NET_WM_STRUT_PARTIAL, 12);
  if (window.isFollowed) askForPlace(id);
}

void X11Panels::askForType(xcb_window_t id) {
  expect(property(connection_.xcb(), id, atoms_._NET_WM_WINDOW_TYPE, kMaxTypes),
         [this, id](const void* reply) {
           Window* window = find(id);
           if (!window) return;
           const auto types = unitsOf(reply);
           const xcb_atom_t dock = atoms_._NET_WM_WINDOW_TYPE_DOCK;
           window->isDock = std::ranges::find(types, dock) != types.end();
           window->facts.strut.reset();
         });
}

void X11Panels::askForStrut(xcb_window_t id, xcb_atom_t name, std::uint32_t length) {
  expect(property(connection_.xcb(), id, name, length), [this, id, length](const void* reply) {
    Window* window = find(id);
    if (!window) return;
    const auto units = unitsOf(reply);
    Strut strut{};
    std::copy_n(units.begin(), std::min<std::size_t>(units.size(), length), strut.begin());
    const bool isAny = std::any_of(strut.begin(), strut.begin() + 4,
                                   [](std::uint32_t thickness) { return thickness != 0; });
    if (isAny) window->facts.strut = strut;
    if (window->isPanel() && !window->isFollowed) follow(id, *window);
  });
}

void X11Panels::askForPlace(xcb_window_t id) {
  xcb_connection_t* xcb = connection_.xcb();
  expect(xcb_get_geometry_unchecked(xcb, id), [this, id](const void* reply) {
    Window* window = find(id);
    if (!window || !reply) return;
    const auto& size = replyAs<xcb_get_geometry_reply_t>(reply);
    window->facts.geometry.setSize({size.width, size.height});
  });
  expect(xcb_translate_coordinates_unchecked(xcb, id, connection_.root(), 0, 0),
         [this, id](const void* reply) {
           Window* window = find(id);
           if (!window || !reply) return;
           const auto& corner = replyAs<xcb_translate_coordinates_reply_t>(reply);
           window->facts.geometry.moveTopLeft({corner.dst_x, corner.dst_y});
         });
  expect(xcb_get_window_attributes_unchecked(xcb, id), [this, id](const void* reply) {
    Window* window = find(id);
    if (!window) return;
    const auto state = reply ? replyAs<xcb_get_window_attributes_reply_t>(reply).map_state
                             : std::uint8_t{XCB_MAP_STATE_UNMAPPED};
    window->facts.isMapped = state == XCB_MAP_STATE_VIEWABLE;
  });
}

void X11Panels::follow(xcb_window_t id, Window& window) {
  window.isFollowed = true;
  events_.select(id, kFollowed);
  // The window may have changed just before it was followed.
  unsettlePanel(id);
}

void X11Panels::announce() {
  std::vector<DockFacts> docks;
  for (const auto& [id, window] : windows_) {
    if (window.isPanel()) docks.push_back(window.facts);
  }
  // The table has no fixed order.
  std::ranges::sort(docks, [](const DockFacts& a, const DockFacts& b) {
    const QRect& first = a.geometry;
    const QRect& second = b.geometry;
    return std::tuple(first.x(), first.y(), first.width(), first.height()) <
           std::tuple(second.x(), second.y(), second.width(), second.height());
  });
  const bool isNews = docks != docks_ || workArea_ != announcedWorkArea_;
  docks_ = std::move(docks);
  announcedWorkArea_ = workArea_;
  if (!std::exchange(isKnown_, true) || isNews) handlers_.changed();
  if (std::exchange(isRestacked_, false) && followsStacking_) handlers_.restacked();
  const bool isFullScreen = fullScreen_ != XCB_WINDOW_NONE;
  if (followsFullScreen_ && announcedFullScreen_ != isFullScreen) {
    announcedFullScreen_ = isFullScreen;
    handlers_.fullScreenChanged(isFullScreen);
  }
}

X11Panels::Window* X11Panels::find(xcb_window_t id) {
  const auto found = windows_.find(id);
  return found == windows_.end() ? nullptr : &found->second;
}

void X11Panels::unsettlePanel(xcb_window_t id) {
  const Window* window = find(id);
  const bool isPanel = window && window->isFollowed;
  if (isPanel && std::ranges::find(unsettled_, id) == unsettled_.end()) unsettled_.push_back(id);
}

}  // namespace vembrix
