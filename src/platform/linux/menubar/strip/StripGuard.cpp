#include "platform/linux/menubar/strip/StripGuard.h"

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <span>
#include <utility>

#include "platform/linux/support/XcbEvent.h"
#include "platform/linux/x11/QtEwmh.h"
#include "platform/linux/x11/X11Connection.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// The longest time that a window manager takes for a window's request.
constexpr milliseconds kSettlingTime{400};
/// The longest time that it takes to show a window.
constexpr seconds kMappingTime{3};
/// The number of attempts in quick succession; later ones follow one by one, each after this time.
constexpr int kQuickAttempts = 4;
constexpr seconds kPatience{30};

/// As many requests are watched before a window manager counts as dependable.
constexpr int kWatchedRequests = 3;

constexpr std::uint32_t kMaxUnits = 64;

xcb_get_property_cookie_t ask(xcb_connection_t* xcb, xcb_window_t window, xcb_atom_t name) {
  return xcb_get_property_unchecked(xcb, 0, window, name, XCB_ATOM_ANY, 0, kMaxUnits);
}

std::vector<std::uint32_t> take(xcb_connection_t* xcb, xcb_get_property_cookie_t cookie) {
  const XcbPtr<xcb_get_property_reply_t> reply{xcb_get_property_reply(xcb, cookie, nullptr)};
  if (!reply || reply->format != 32) return {};
  const auto* units = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {units, units + reply->value_len};
}

/// Returns those states of the window that the strip requests; the others belong to the window
/// manager and the user.
std::vector<std::uint32_t> ownStates(const xcb_ewmh_connection_t& atoms,
                                     std::vector<std::uint32_t> states,
                                     std::span<const std::uint32_t> desktop) {
  const auto own = dockStates(atoms);
  // Window managers report by one of the two properties, or by both, that it is on all desktops.
  const bool isOnAll = desktop.size() == 1 && desktop[0] == kAllDesktops;
  std::erase_if(states, [&](xcb_atom_t state) {
    return std::ranges::find(own, state) == own.end() ||
           (isOnAll && state == atoms._NET_WM_STATE_STICKY);
  });
  std::ranges::sort(states);
  return states;
}

}  // namespace

StripGuard::StripGuard(Handlers handlers) : handlers_(std::move(handlers)) {
  QCoreApplication::instance()->installNativeEventFilter(this);
}

StripGuard::~StripGuard() {
  if (auto* application = QCoreApplication::instance()) application->removeNativeEventFilter(this);
}

void StripGuard::watch(xcb_window_t window) {
  window_ = window;
  accepted_.reset();
  wasMapped_ = false;
  wasReparented_ = false;
  ownStrutEvents_ = 0;
  mapping_.reset();
  endAwaiting();
}

void StripGuard::expectMapping() {
  const Duration delay = attempts_ < kQuickAttempts ? Duration(kMappingTime) : kPatience;
  mapping_ = MainQueue::main().schedule(delay, [this] {
    if (wasMapped_) return;
    attempts_ += 1;
    handlers_.remake();
  });
}

void StripGuard::expectStrut(const Strut& strut) {
  strut_ = strut;
  // One event for each of the two properties.
  ownStrutEvents_ += 2;
}

bool StripGuard::awaitSize(bool wasInPlace) {
  if (!wasInPlace) endAwaiting();
  if (fulfilled_ == kWatchedRequests) {
    isAwaiting_ = true;
  } else {
    fulfilled_ += 1;
  }
  return isAwaiting_;
}

void StripGuard::endAwaiting() {
  fulfilled_ = 0;
  if (std::exchange(isAwaiting_, false)) handlers_.sized();
}

void StripGuard::checkSoon() {
  endAwaiting();
  const Duration delay = attempts_ < kQuickAttempts ? Duration(kSettlingTime) : kPatience;
  checking_ = MainQueue::main().schedule(delay, [this] { check(); });
}

bool StripGuard::nativeEventFilter(const QByteArray& /*eventType*/, void* message,
                                   qintptr* /*result*/) {
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  switch (eventType(event)) {
    case XCB_PROPERTY_NOTIFY:
      noteProperty(as<xcb_property_notify_event_t>(event));
      break;
    case XCB_CONFIGURE_NOTIFY:
      return noteFrame(as<xcb_configure_notify_event_t>(event));
    case XCB_REPARENT_NOTIFY:
      if (as<xcb_reparent_notify_event_t>(event).window == window_) {
        wasReparented_ = true;
        checkSoon();
      }
      break;
    case XCB_MAP_NOTIFY:
      if (as<xcb_map_notify_event_t>(event).window == window_) {
        wasMapped_ = true;
        mapping_.reset();
        checkSoon();
      }
      break;
    case XCB_UNMAP_NOTIFY:
      if (as<xcb_unmap_notify_event_t>(event).window == window_) checkSoon();
      break;
    case XCB_DESTROY_NOTIFY:
      if (as<xcb_destroy_notify_event_t>(event).window == window_) {
        checkSoon();
      }
      break;
    default:
      break;
  }
  return false;
}

void StripGuard::noteProperty(const xcb_property_notify_event_t& event) {
  if (event.window != window_) return;
  const xcb_ewmh_connection_t& atoms = *ewmhOfQt();
  if (event.atom == atoms._NET_WM_STRUT || event.atom == atoms._NET_WM_STRUT_PARTIAL) {
    if (ownStrutEvents_ > 0) {
      ownStrutEvents_ -= 1;
    } else {
      checkSoon();
    }
  } else if (event.atom == atoms._NET_WM_WINDOW_TYPE || event.atom == atoms._NET_WM_STATE ||
             event.atom == atoms._NET_WM_DESKTOP) {
    checkSoon();
  }
}

bool StripGuard::noteFrame(const xcb_configure_notify_event_t& event) {
  if (event.window != window_ || fulfilled_ < kWatchedRequests) return false;
  const QRect requested = handlers_.requestedFrame();
  const QRect reported(event.x, event.y, event.width, event.height);
  // Window managers report the place on the screen, the server that within the frame.
  const bool isFromServer = (event.response_type & 0x80) == 0;
  if (!isFromServer && reported == requested) return true;
  if (!isFromServer || reported.size() != requested.size()) {
    endAwaiting();
    return false;
  }
  // The last one of the watched requests may be reported late: Qt finds out about its place.
  if (!std::exchange(isAwaiting_, false)) return false;
  handlers_.sized();
  return true;
}

void StripGuard::check() {
  if (!wasMapped_) return;
  const Facts facts = read();
  const Health health = isSwallowed() ? Health::Lost : healthOf(facts);
  if (health == Health::Well) {
    attempts_ = 0;
    if (!accepted_) accepted_ = facts;
    handlers_.settled();
    return;
  }
  attempts_ += 1;
  // Setting the hints again has not helped, or another window manager ignores them.
  if (health == Health::Lost || attempts_ > 1) {
    handlers_.remake();
  } else {
    handlers_.repair();
    checkSoon();
  }
}

StripGuard::Facts StripGuard::read() const {
  const xcb_ewmh_connection_t& ewmh = *ewmhOfQt();
  xcb_connection_t* xcb = ewmh.connection;
  // Sends all queries before it reads the answers: one round trip.
  const auto attributes = xcb_get_window_attributes_unchecked(xcb, window_);
  const auto types = ask(xcb, window_, ewmh._NET_WM_WINDOW_TYPE);
  const auto states = ask(xcb, window_, ewmh._NET_WM_STATE);
  const auto desktop = ask(xcb, window_, ewmh._NET_WM_DESKTOP);
  const auto strut = ask(xcb, window_, ewmh._NET_WM_STRUT);
  const auto partialStrut = ask(xcb, window_, ewmh._NET_WM_STRUT_PARTIAL);
  const XcbPtr<xcb_get_window_attributes_reply_t> state{
      xcb_get_window_attributes_reply(xcb, attributes, nullptr)};
  auto desktops = take(xcb, desktop);
  auto stateList = ownStates(ewmh, take(xcb, states), desktops);
  return {.isViewable = state && state->map_state == XCB_MAP_STATE_VIEWABLE,
          .types = take(xcb, types),
          .states = std::move(stateList),
          .desktop = std::move(desktops),
          .strut = take(xcb, strut),
          .partialStrut = take(xcb, partialStrut)};
}

StripGuard::Health StripGuard::healthOf(const Facts& facts) const {
  if (!facts.isViewable) return Health::Lost;
  const bool hasStrut = std::ranges::equal(facts.partialStrut, strut_) &&
                        std::ranges::equal(facts.strut, std::span(strut_).first<4>());
  const bool hasHints =
      !accepted_ || (facts.types == accepted_->types && facts.desktop == accepted_->desktop &&
                     facts.states == accepted_->states);
  return hasStrut && hasHints ? Health::Well : Health::HintsLost;
}

bool StripGuard::isSwallowed() const {
  if (!wasReparented_) return false;
  const xcb_ewmh_connection_t& ewmh = *ewmhOfQt();
  xcb_connection_t* xcb = ewmh.connection;
  static const xcb_atom_t windowState = atomOfQt("WM_STATE");
  xcb_window_t window = window_;
  while (true) {
    const XcbPtr<xcb_query_tree_reply_t> tree{
        xcb_query_tree_reply(xcb, xcb_query_tree_unchecked(xcb, window), nullptr)};
    if (!tree || tree->parent == XCB_WINDOW_NONE || tree->parent == tree->root) return false;
    window = tree->parent;
    // Window managers set this property on programs' windows, not on their own frames.
    if (!take(xcb, ask(xcb, window, windowState)).empty()) return true;
  }
}

}  // namespace vembrix
