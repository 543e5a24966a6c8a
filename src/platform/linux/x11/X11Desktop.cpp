#include "platform/linux/x11/X11Desktop.h"

#include <poll.h>
#include <xcb/randr.h>

#include <algorithm>
#include <span>
#include <utility>

#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "platform/linux/support/XcbEvent.h"
#include "platform/linux/x11/DesktopNames.h"
#include "platform/linux/x11/ProgramEnd.h"

namespace vembrix {
namespace {

/// In 32-bit units. No person gives longer names.
constexpr std::uint32_t kMaxNamesLength = 64 * 1024;
/// The time in which a window manager names its desktops after it has started or changed their
/// number.
constexpr std::chrono::seconds kSettlingTime{2};
/// The time in which a window manager that names its desktops reports both a new number and the
/// names.
constexpr std::chrono::milliseconds kNamesDelay{500};
/// The time for which a new name is held back, because a restarting window manager may report late
/// that it has started.
constexpr std::chrono::milliseconds kRenameDelay{500};

/// Returns the window's own name, or an empty one.
std::string nameOf(X11Connection& connection, xcb_window_t window) {
  xcb_ewmh_get_utf8_strings_reply_t reply{};
  const auto cookie = xcb_ewmh_get_wm_name_unchecked(connection.ewmh(), window);
  if (xcb_ewmh_get_wm_name_reply(connection.ewmh(), cookie, &reply, nullptr) == 0) return {};
  std::string name(reply.strings, reply.strings_len);
  xcb_ewmh_get_utf8_strings_reply_wipe(&reply);
  return name;
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
    : events_(std::move(connection)),
      listening_(events_.listen({.event = [this](const auto& event) { note(event); },
                                 .batchEnd = [this] { finishBatch(); }})) {
  // Selected before the first query, so that no change is missed.
  events_.select(connection_.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
  refresh();
  announced_ = shown();
}

X11Desktop::~X11Desktop() = default;

void X11Desktop::follow() {
  isFollowing_ = true;
  events_.begin();
}

bool X11Desktop::isXwayland() const {
  // The extension exists from version 23.1 on; older servers are recognised by their outputs.
  xcb_connection_t* xcb = connection_.xcb();
  const std::string_view extension = "XWAYLAND";
  const auto asked = xcb_query_extension_unchecked(
      xcb, static_cast<std::uint16_t>(extension.size()), extension.data());
  const XcbPtr<xcb_query_extension_reply_t> reply{xcb_query_extension_reply(xcb, asked, nullptr)};
  if (reply && reply->present != 0) return true;
  return std::ranges::any_of(outputNames(connection_),
                             [](const std::string& name) { return name.starts_with("XWAYLAND"); });
}

bool X11Desktop::waitForSpaces(std::chrono::milliseconds limit) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + limit;
  for (;;) {
    const bool isMore = events_.read();
    if (spaceCount()) return true;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    if (left <= std::chrono::milliseconds::zero()) return false;
    if (isMore) continue;
    pollfd socket{xcb_get_file_descriptor(connection_.xcb()), POLLIN, 0};
    poll(&socket, 1, static_cast<int>(left.count()));
  }
}

X11Desktop::SpaceID X11Desktop::activeSpace() const {
  return active_ && *active_ < spaces_.size() ? spaces_[*active_].id : 0;
}

bool X11Desktop::activate(SpaceID space) {
  const std::optional<std::uint32_t> index = indexOf(space);
  if (!index) return false;
  xcb_ewmh_request_change_current_desktop(connection_.ewmh(), connection_.screen(), *index,
                                          XCB_CURRENT_TIME);
  events_.flush();
  return true;
}

X11Desktop::SpaceID X11Desktop::spaceBeside(SpaceID space, int places) const {
  const std::optional<std::uint32_t> index = indexOf(space);
  if (!index) return 0;
  const std::int64_t place = std::int64_t{*index} + places;
  const bool isThere = place >= 0 && place < std::ssize(spaces_);
  return isThere ? spaces_[static_cast<std::size_t>(place)].id : 0;
}

void X11Desktop::setName(SpaceID space, std::string_view name) {
  // The property holds several names, each terminated by NUL.
  name = name.substr(0, name.find('\0'));
  const std::optional<std::uint32_t> index = indexOf(space);
  if (index && names_.setName(*index, name)) writeNames();
}

void X11Desktop::clearName(SpaceID space, std::string_view fallback) {
  const std::optional<std::uint32_t> index = indexOf(space);
  if (index && names_.clearName(*index, fallback)) writeNames();
}

std::string_view X11Desktop::ownName(SpaceID space) const {
  const std::optional<std::uint32_t> index = indexOf(space);
  return index ? names_.ownName(*index) : std::string_view();
}

void X11Desktop::writeNames() {
  const std::string joined = desktopNamesProperty(names_.all());
  xcb_ewmh_set_desktop_names(connection_.ewmh(), connection_.screen(),
                             static_cast<std::uint32_t>(joined.size()), joined.data());
  events_.flush();
}

std::optional<std::uint32_t> X11Desktop::spaceCount() const {
  return hasWindowManager_ ? count_ : std::nullopt;
}

std::optional<std::uint32_t> X11Desktop::indexOf(SpaceID space) const {
  const auto found = std::ranges::find(spaces_, space, &Space::id);
  if (found == spaces_.end()) return std::nullopt;
  return static_cast<std::uint32_t>(found - spaces_.begin());
}

bool X11Desktop::isKnown(SpaceID space) const {
  return indexOf(space).has_value();
}

std::vector<X11Desktop::SpaceID> X11Desktop::spaceIDs() const {
  std::vector<SpaceID> all;
  all.reserve(spaces_.size());
  for (const Space& space : spaces_) all.push_back(space.id);
  return all;
}

X11Desktop::Shown X11Desktop::shown() const {
  return {.known = !answer_.isNull(), .list = listCount_, .active = activeSpace()};
}

// Events

void X11Desktop::finishBatch() {
  if (stale_.any()) refresh();
  if (connection_.isBroken()) endProgram("the X server went away");
  const Shown now = shown();
  if (now == announced_) return;
  const Shown before = std::exchange(announced_, now);
  const bool isAnotherList = now.list != before.list || now.known != before.known;
  // A missing window manager does not remove desktops.
  if (now.known && isAnotherList) {
    windows_.removeSpaces([this](SpaceID space) { return !isKnown(space); }, now.active);
  }
  // The status item and the labels are updated within this call, all by the same settings.
  const Token reading = UserDefaults::standard().beginReading();
  NotificationCenter::workspace().post(notification::kActiveSpaceDidChange);
}

void X11Desktop::note(const xcb_generic_event_t& event) {
  switch (eventType(event)) {
    case XCB_PROPERTY_NOTIFY:
      notePropertyChange(as<xcb_property_notify_event_t>(event));
      break;
    case XCB_DESTROY_NOTIFY:
      if (as<xcb_destroy_notify_event_t>(event).window == checkWindow_) {
        stale_.windowManager = true;
      }
      break;
    default:
      // Includes errors: a window may disappear at any time.
      break;
  }
}

void X11Desktop::notePropertyChange(const xcb_property_notify_event_t& event) {
  const xcb_ewmh_connection_t& atoms = *connection_.ewmh();
  const bool isOfCheckWindow = event.window == checkWindow_ && event.window != XCB_WINDOW_NONE;
  if (event.atom == atoms._NET_SUPPORTING_WM_CHECK ||
      (isOfCheckWindow && event.atom == atoms._NET_WM_NAME)) {
    stale_.windowManager = true;
  } else if (event.window != connection_.root()) {
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
  xcb_ewmh_connection_t* ewmh = connection_.ewmh();
  const int screen = connection_.screen();
  const Stale stale = std::exchange(stale_, {});
  // Sends all queries before it reads the answers: one round trip.
  xcb_get_property_cookie_t count{};
  xcb_get_property_cookie_t current{};
  xcb_get_property_cookie_t names{};
  if (stale.count) count = xcb_ewmh_get_number_of_desktops_unchecked(ewmh, screen);
  if (stale.current) current = xcb_ewmh_get_current_desktop_unchecked(ewmh, screen);
  if (stale.names) names = requestNames();

  std::uint32_t value = 0;
  const std::optional<std::uint32_t> countBefore = count_;
  if (stale.count) {
    const auto valid = xcb_ewmh_get_number_of_desktops_reply(ewmh, count, &value, nullptr);
    count_ = valid != 0 ? std::optional(std::min(value, kMaxDesktops)) : std::nullopt;
  }
  if (stale.current) {
    const auto valid = xcb_ewmh_get_current_desktop_reply(ewmh, current, &value, nullptr);
    current_ = valid != 0 ? std::optional(value) : std::nullopt;
  }
  std::optional<std::vector<std::string>> read;
  if (stale.names) read = readNames(names);
  if (stale.windowManager) refreshWindowManager();
  if (stale.windowManager || count_ != countBefore) settledAt_ = Clock::now() + kSettlingTime;
  const bool isAnotherList = stale.windowManager || count_ != countBefore;
  // Without an event loop no timer could end the wait.
  if (isAnotherList && isFollowing_) namesBy_ = Clock::now() + kNamesDelay;
  if (read) takeNames(std::move(*read));
  if (isAnotherList || stale.names || namesDue_ || awaitsNames()) {
    rebuildSpaces();
  } else {
    active_ = current_;
  }
}

void X11Desktop::refreshWindowManager() {
  xcb_ewmh_connection_t* ewmh = connection_.ewmh();
  const auto claimed = [ewmh](xcb_window_t window) {
    xcb_window_t claim = XCB_WINDOW_NONE;
    const auto cookie = xcb_ewmh_get_supporting_wm_check_unchecked(ewmh, window);
    xcb_ewmh_get_supporting_wm_check_reply(ewmh, cookie, &claim, nullptr);
    return claim;
  };
  xcb_window_t window = claimed(connection_.root());
  if (window == connection_.root()) window = XCB_WINDOW_NONE;
  followCheckWindow(window);
  // The root's property outlives a killed window manager. The window that it names, which has the
  // same property, does not.
  hasWindowManager_ = window != XCB_WINDOW_NONE && claimed(window) == window;
  const std::string name = hasWindowManager_ ? nameOf(connection_, window) : std::string();
  hasName_ = !name.empty();
  isKnownByNames_ = ownsDesktopNames(name);
  names_.setWindowManager(isKnownByNames_);
}

void X11Desktop::followCheckWindow(xcb_window_t window) {
  checkWindow_ = window;
  if (window == XCB_WINDOW_NONE) return;
  // Some window managers set its property after the root's.
  events_.select(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
}

xcb_get_property_cookie_t X11Desktop::requestNames() {
  const xcb_ewmh_connection_t& atoms = *connection_.ewmh();
  return xcb_get_property_unchecked(connection_.xcb(), 0, connection_.root(),
                                    atoms._NET_DESKTOP_NAMES, atoms.UTF8_STRING, 0,
                                    kMaxNamesLength);
}

std::vector<std::string> X11Desktop::readNames(xcb_get_property_cookie_t cookie) {
  const XcbPtr<xcb_get_property_reply_t> reply{
      xcb_get_property_reply(connection_.xcb(), cookie, nullptr)};
  if (!reply || reply->type != connection_.ewmh()->UTF8_STRING || reply->format != 8 ||
      reply->bytes_after != 0) {
    return {};
  }
  return desktopNames({static_cast<const char*>(xcb_get_property_value(reply.get())),
                       static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))},
                      kMaxDesktops);
}

void X11Desktop::takeNames(std::vector<std::string> names) {
  // The pending names are the user's: another desktop was renamed just before.
  if (pendingNames_ && names != *pendingNames_) takePendingNames();
  if (names == names_.all()) {
    pendingNames_.reset();
    return;
  }
  pendingNames_ = std::move(names);
  if (Clock::now() < settledAt_ || names_.keepsItsNames()) {
    takePendingNames();
    return;
  }
  pendingNamesDue_ = MainQueue::main().schedule(kRenameDelay, [this] { takePendingNames(); });
}

void X11Desktop::takePendingNames() {
  pendingNamesDue_ = {};
  if (!pendingNames_) return;
  using Circumstances = DesktopNames::Circumstances;
  const auto circumstances =
      Clock::now() < settledAt_ ? Circumstances::Settling : Circumstances::Steady;
  const DesktopNames::Change change =
      names_.take(*std::exchange(pendingNames_, std::nullopt), circumstances);
  rebuildSpaces();
  if (change.ownNames && nameHandlers_.ownNamesChanged) nameHandlers_.ownNamesChanged();
  if (change.renamed && *change.renamed < spaces_.size() && nameHandlers_.renamed) {
    // A copy, because the handler may set names, too.
    const std::string name = names_.all()[*change.renamed];
    nameHandlers_.renamed(spaces_[*change.renamed].id, name);
  }
}

X11Desktop::SpaceID X11Desktop::idOfName(const std::string& name) {
  // Larger than all ids of numbered desktops.
  const SpaceID next = SpaceID{kMaxDesktops} + idsOfNames_.size() + 1;
  return idsOfNames_.try_emplace(name, next).first->second;
}

bool X11Desktop::awaitsNames() const {
  if (!spaceCount() || Clock::now() >= namesBy_) return false;
  // A window manager that has just started may not have the desktops of its configuration yet.
  const bool hasJustCome = spaces_.empty();
  if (hasJustCome) return isKnownByNames_ || !hasName_;
  return isKnownByNames_ && names_.all().size() != *spaceCount();
}

void X11Desktop::rebuildSpaces() {
  if (awaitsNames()) {
    // A Space that exists only for a moment would be stored for ever.
    namesDue_ = MainQueue::main().schedule(kNamesDelay, [this] {
      rebuildSpaces();
      finishBatch();
    });
    return;
  }
  namesDue_ = {};
  active_ = current_;
  const std::uint32_t count = spaceCount().value_or(0);
  const std::vector<std::string>& names = names_.all();
  std::vector<Space> spaces;
  spaces.reserve(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    const bool isKnownByName = isKnownByNames_ && i < names.size() && !names[i].empty() &&
                               std::ranges::count(names, names[i]) == 1;
    if (isKnownByName) {
      spaces.push_back({idOfName(names[i]), "x11-name-" + names[i]});
    } else {
      spaces.push_back({SpaceID{i} + 1, "x11-desktop-" + std::to_string(i + 1)});
    }
  }
  const bool isSame = spaces == spaces_ && answer_.isNull() != spaceCount().has_value();
  if (isSame) return;
  spaces_ = std::move(spaces);
  listCount_ += 1;
  rebuildAnswer();
}

void X11Desktop::rebuildAnswer() {
  if (!spaceCount()) {
    answer_ = {};
    return;
  }
  PropertyList::Array spaces;
  spaces.reserve(spaces_.size());
  for (const Space& space : spaces_) {
    const auto id = static_cast<std::int64_t>(space.id);
    spaces.emplace_back(PropertyList::Dictionary{
        {"ManagedSpaceID", id}, {"id64", id}, {"type", 0}, {"uuid", space.uuid}});
  }
  answer_ = PropertyList(PropertyList::Array{PropertyList::Dictionary{
      {"Display Identifier", std::string(kDisplay)}, {"Spaces", std::move(spaces)}}});
}

}  // namespace vembrix
