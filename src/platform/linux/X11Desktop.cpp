#include "platform/linux/X11Desktop.h"

#include <poll.h>
#include <xcb/randr.h>

#include <QSocketNotifier>
#include <algorithm>
#include <span>
#include <utility>

#include "platform/NotificationCenter.h"
#include "platform/linux/ProgramEnd.h"

namespace vembrix {
namespace {

/// In 32-bit units. Names beyond it are no names that a person gave.
constexpr std::uint32_t kMaxNamesLength = 64 * 1024;

void selectEvents(X11Connection& connection, xcb_window_t window, std::uint32_t events) {
  xcb_change_window_attributes(connection.xcb(), window, XCB_CW_EVENT_MASK, &events);
}

std::vector<std::string> outputNames(const X11Connection& connection) {
  xcb_connection_t* xcb = connection.xcb();
  const XcbPtr<xcb_randr_get_screen_resources_current_reply_t> resources{
      xcb_randr_get_screen_resources_current_reply(
          xcb, xcb_randr_get_screen_resources_current_unchecked(xcb, connection.root()), nullptr)};
  if (!resources) return {};
  const std::span outputs(
      xcb_randr_get_screen_resources_current_outputs(resources.get()),
      static_cast<std::size_t>(
          xcb_randr_get_screen_resources_current_outputs_length(resources.get())));
  std::vector<std::string> names;
  for (const xcb_randr_output_t output : outputs) {
    const XcbPtr<xcb_randr_get_output_info_reply_t> info{xcb_randr_get_output_info_reply(
        xcb, xcb_randr_get_output_info_unchecked(xcb, output, resources->config_timestamp),
        nullptr)};
    if (!info) continue;
    const auto* name = reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get()));
    names.emplace_back(name,
                       static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info.get())));
  }
  return names;
}

}  // namespace

X11Desktop::X11Desktop(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)) {
  // Selected before the first reading, so that no change falls in between.
  selectEvents(*connection_, connection_->root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
  refresh();
  announced_ = shown();
}

X11Desktop::~X11Desktop() = default;

void X11Desktop::follow() {
  notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_->xcb()),
                                                QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { handleEvents(); });
  // What xcb has read from the socket already does not wake the notifier.
  handleEvents();
}

bool X11Desktop::isXwayland() const {
  // Its extension came with 23.1; before, its outputs told.
  xcb_connection_t* xcb = connection_->xcb();
  const std::string_view extension = "XWAYLAND";
  const auto asked = xcb_query_extension_unchecked(
      xcb, static_cast<std::uint16_t>(extension.size()), extension.data());
  const XcbPtr<xcb_query_extension_reply_t> reply{xcb_query_extension_reply(xcb, asked, nullptr)};
  if (reply && reply->present != 0) return true;
  return std::ranges::any_of(outputNames(*connection_),
                             [](const std::string& name) { return name.starts_with("XWAYLAND"); });
}

bool X11Desktop::waitForSpaces(std::chrono::milliseconds limit) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + limit;
  for (;;) {
    const Reading reading = readEvents();
    if (spaceCount()) return true;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    if (left <= std::chrono::milliseconds::zero()) return false;
    if (reading == Reading::More) continue;
    pollfd socket{xcb_get_file_descriptor(connection_->xcb()), POLLIN, 0};
    poll(&socket, 1, static_cast<int>(left.count()));
  }
}

X11Desktop::SpaceID X11Desktop::activeSpace() const {
  if (!current_) return 0;
  const SpaceID space = SpaceID{*current_} + 1;
  return isKnown(space) ? space : 0;
}

bool X11Desktop::activate(SpaceID space) {
  if (!isKnown(space)) return false;
  xcb_ewmh_request_change_current_desktop(connection_->ewmh(), connection_->screen(),
                                          static_cast<std::uint32_t>(space - 1), XCB_CURRENT_TIME);
  flush();
  return true;
}

void X11Desktop::setName(SpaceID space, std::string_view name) {
  if (!isKnown(space)) return;
  const auto index = static_cast<std::size_t>(space - 1);
  // The names stand one behind the other, each ended by a NUL.
  name = name.substr(0, name.find('\0'));
  if (index < names_.size() && names_[index] == name) return;
  if (index >= names_.size()) names_.resize(index + 1);
  names_[index].assign(name);
  std::string joined;
  for (const std::string& entry : names_) joined.append(entry).push_back('\0');
  xcb_ewmh_set_desktop_names(connection_->ewmh(), connection_->screen(),
                             static_cast<std::uint32_t>(joined.size()), joined.data());
  flush();
}

std::optional<std::uint32_t> X11Desktop::spaceCount() const {
  return hasWindowManager_ ? count_ : std::nullopt;
}

bool X11Desktop::isKnown(SpaceID space) const {
  return space != 0 && space <= spaceCount().value_or(0);
}

X11Desktop::Shown X11Desktop::shown() const {
  const std::optional<std::uint32_t> count = spaceCount();
  return {count.has_value(), count.value_or(0), activeSpace()};
}

// Events

void X11Desktop::handleEvents() {
  if (readEvents() == Reading::Done) return;
  furtherReading_ = MainQueue::main().schedule(Duration::zero(), [this] { handleEvents(); });
}

X11Desktop::Reading X11Desktop::readEvents() {
  while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(connection_->xcb())}) {
    note(*event);
  }
  if (stale_.any()) refresh();
  if (connection_->isBroken()) endProgram("the X server went away");
  const Shown now = shown();
  if (now != announced_) {
    announced_ = now;
    NotificationCenter::workspace().post(notification::kActiveSpaceDidChange);
  }
  noteQueuedEvents();
  return stale_.any() ? Reading::More : Reading::Done;
}

void X11Desktop::noteQueuedEvents() {
  while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_queued_event(connection_->xcb())}) {
    note(*event);
  }
}

void X11Desktop::flush() {
  xcb_flush(connection_->xcb());
  // A full pipe makes xcb read while it writes.
  noteQueuedEvents();
  if (!stale_.any()) return;
  furtherReading_ = MainQueue::main().schedule(Duration::zero(), [this] { handleEvents(); });
}

void X11Desktop::note(const xcb_generic_event_t& event) {
  switch (eventType(event)) {
    case XCB_PROPERTY_NOTIFY:
      notePropertyChange(reinterpret_cast<const xcb_property_notify_event_t&>(event));
      break;
    case XCB_DESTROY_NOTIFY:
      if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == checkWindow_) {
        stale_.windowManager = true;
      }
      break;
    default:
      // Errors among them: a window may go at any time.
      break;
  }
}

void X11Desktop::notePropertyChange(const xcb_property_notify_event_t& event) {
  const xcb_ewmh_connection_t& atoms = *connection_->ewmh();
  if (event.atom == atoms._NET_SUPPORTING_WM_CHECK) {
    stale_.windowManager = true;
  } else if (event.window != connection_->root()) {
    return;
  } else if (event.atom == atoms._NET_NUMBER_OF_DESKTOPS) {
    stale_.count = true;
  } else if (event.atom == atoms._NET_CURRENT_DESKTOP) {
    stale_.current = true;
  } else if (event.atom == atoms._NET_DESKTOP_NAMES) {
    stale_.names = true;
  }
}

// The model

void X11Desktop::refresh() {
  xcb_ewmh_connection_t* ewmh = connection_->ewmh();
  const int screen = connection_->screen();
  const Stale stale = std::exchange(stale_, {});
  // All questions, then all answers: one round trip.
  xcb_get_property_cookie_t count{};
  xcb_get_property_cookie_t current{};
  xcb_get_property_cookie_t names{};
  if (stale.count) count = xcb_ewmh_get_number_of_desktops_unchecked(ewmh, screen);
  if (stale.current) current = xcb_ewmh_get_current_desktop_unchecked(ewmh, screen);
  if (stale.names) names = requestNames();

  std::uint32_t value = 0;
  if (stale.count) {
    const auto valid = xcb_ewmh_get_number_of_desktops_reply(ewmh, count, &value, nullptr);
    count_ = valid != 0 ? std::optional(std::min(value, kMaxDesktops)) : std::nullopt;
  }
  if (stale.current) {
    const auto valid = xcb_ewmh_get_current_desktop_reply(ewmh, current, &value, nullptr);
    current_ = valid != 0 ? std::optional(value) : std::nullopt;
  }
  if (stale.names) readNames(names);
  if (stale.windowManager) refreshWindowManager();
  rebuildAnswer();
}

void X11Desktop::refreshWindowManager() {
  xcb_ewmh_connection_t* ewmh = connection_->ewmh();
  const auto claimed = [ewmh](xcb_window_t window) {
    xcb_window_t claim = XCB_WINDOW_NONE;
    const auto cookie = xcb_ewmh_get_supporting_wm_check_unchecked(ewmh, window);
    xcb_ewmh_get_supporting_wm_check_reply(ewmh, cookie, &claim, nullptr);
    return claim;
  };
  xcb_window_t window = claimed(connection_->root());
  if (window == connection_->root()) window = XCB_WINDOW_NONE;
  followCheckWindow(window);
  // The root's word outlives a window manager that was killed; the window that
  // it names does not, and says the same of itself.
  hasWindowManager_ = window != XCB_WINDOW_NONE && claimed(window) == window;
}

void X11Desktop::followCheckWindow(xcb_window_t window) {
  if (checkWindow_ != XCB_WINDOW_NONE && checkWindow_ != window) {
    selectEvents(*connection_, checkWindow_, XCB_EVENT_MASK_NO_EVENT);
  }
  checkWindow_ = window;
  if (window == XCB_WINDOW_NONE) return;
  // Its property too: some set it after the root's.
  selectEvents(*connection_, window,
               XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
}

xcb_get_property_cookie_t X11Desktop::requestNames() {
  const xcb_ewmh_connection_t& atoms = *connection_->ewmh();
  return xcb_get_property_unchecked(connection_->xcb(), 0, connection_->root(),
                                    atoms._NET_DESKTOP_NAMES, atoms.UTF8_STRING, 0,
                                    kMaxNamesLength);
}

void X11Desktop::readNames(xcb_get_property_cookie_t cookie) {
  names_.clear();
  const XcbPtr<xcb_get_property_reply_t> reply{
      xcb_get_property_reply(connection_->xcb(), cookie, nullptr)};
  if (!reply || reply->type != connection_->ewmh()->UTF8_STRING || reply->format != 8 ||
      reply->bytes_after != 0) {
    return;
  }
  std::string_view rest(static_cast<const char*>(xcb_get_property_value(reply.get())),
                        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\0'), rest.size());
    names_.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
}

void X11Desktop::rebuildAnswer() {
  const std::optional<std::uint32_t> count = spaceCount();
  if (!count) {
    answer_ = {};
    return;
  }
  if (!answer_.isNull() && answeredCount_ == *count) return;
  PropertyList::Array spaces;
  spaces.reserve(*count);
  for (std::int64_t id = 1; id <= std::int64_t{*count}; ++id) {
    spaces.emplace_back(PropertyList::Dictionary{{"ManagedSpaceID", id},
                                                 {"id64", id},
                                                 {"type", 0},
                                                 {"uuid", "x11-desktop-" + std::to_string(id)}});
  }
  answer_ = PropertyList(PropertyList::Array{PropertyList::Dictionary{
      {"Display Identifier", std::string(kDisplay)}, {"Spaces", std::move(spaces)}}});
  answeredCount_ = *count;
}

}  // namespace vembrix
