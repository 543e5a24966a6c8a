#include "platform/linux/labels/OpacityPlayer.h"

#include <array>
#include <limits>
#include <string_view>

#include "platform/linux/x11/X11Connection.h"

namespace vembrix {
namespace {

/// Larger than any difference of counters, so that the end of a wait sends no event.
constexpr xcb_sync_int64_t kNever{std::numeric_limits<std::int32_t>::max(),
                                  std::numeric_limits<std::uint32_t>::max()};

xcb_sync_int64_t value(std::uint32_t low) {
  return {0, low};
}

xcb_sync_counter_t clockOf(xcb_connection_t* xcb) {
  const XcbPtr<xcb_sync_list_system_counters_reply_t> counters{xcb_sync_list_system_counters_reply(
      xcb, xcb_sync_list_system_counters_unchecked(xcb), nullptr)};
  if (!counters) return XCB_NONE;
  for (auto counter = xcb_sync_list_system_counters_counters_iterator(counters.get());
       counter.rem > 0; xcb_sync_systemcounter_next(&counter)) {
    // The name follows its length directly, although the library's structure has padding there.
    const std::string_view name(reinterpret_cast<const char*>(&counter.data->name_len + 1),
                                counter.data->name_len);
    if (name == "SERVERTIME") return counter.data->counter;
  }
  return XCB_NONE;
}

}  // namespace

std::shared_ptr<OpacityPlayer> OpacityPlayer::current() {
  // Never closed, so that the next fade begins sooner.
  static auto& inUse = *new std::shared_ptr<OpacityPlayer>;
  static bool isImpossible = false;
  if (isImpossible) return nullptr;
  if (inUse && xcb_connection_has_error(inUse->xcb_) == 0) return inUse;
  inUse = std::shared_ptr<OpacityPlayer>(new OpacityPlayer);
  if (!inUse->open()) {
    inUse = nullptr;
    isImpossible = true;
  }
  return inUse;
}

bool OpacityPlayer::open() {
  xcb_ = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(xcb_) != 0) return false;
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(xcb_, &xcb_sync_id);
  if (!extension || extension->present == 0) return false;
  // The server accepts requests only from clients that have stated their version.
  const auto version = xcb_sync_initialize(xcb_, XCB_SYNC_MAJOR_VERSION, XCB_SYNC_MINOR_VERSION);
  xcb_discard_reply(xcb_, version.sequence);
  clock_ = clockOf(xcb_);
  if (clock_ == XCB_NONE) return false;
  stopped_ = xcb_generate_id(xcb_);
  xcb_sync_create_counter(xcb_, stopped_, value(0));
  // Ensures that the property exists before the other connection uses it.
  const XcbPtr<xcb_get_input_focus_reply_t> done{
      xcb_get_input_focus_reply(xcb_, xcb_get_input_focus_unchecked(xcb_), nullptr)};
  return done != nullptr;
}

OpacityPlayer::~OpacityPlayer() {
  xcb_disconnect(xcb_);
}

void OpacityPlayer::play(xcb_window_t window, xcb_atom_t property,
                         std::chrono::milliseconds interval,
                         std::span<const std::uint32_t> values) {
  dropEvents();
  isPlaying_ = true;
  fade_ += 1;
  for (const std::uint32_t value : values) {
    sendWait(interval);
    send(window, property, value);
  }
  xcb_flush(xcb_);
}

void OpacityPlayer::stop(xcb_connection_t* other) {
  if (!isPlaying_) return;
  isPlaying_ = false;
  xcb_sync_set_counter(other, stopped_, value(fade_));
}

void OpacityPlayer::set(xcb_window_t window, xcb_atom_t property, std::uint32_t value) {
  send(window, property, value);
  xcb_flush(xcb_);
}

void OpacityPlayer::sendWait(std::chrono::milliseconds interval) {
  // Waits until one of the two is true.
  const std::array<xcb_sync_waitcondition_t, 2> conditions = {
      {{{clock_, XCB_SYNC_VALUETYPE_RELATIVE, value(static_cast<std::uint32_t>(interval.count())),
         XCB_SYNC_TESTTYPE_POSITIVE_COMPARISON},
        kNever},
       {{stopped_, XCB_SYNC_VALUETYPE_ABSOLUTE, value(fade_),
         XCB_SYNC_TESTTYPE_POSITIVE_COMPARISON},
        kNever}}};
  xcb_sync_await(xcb_, conditions.size(), conditions.data());
}

void OpacityPlayer::send(xcb_window_t window, xcb_atom_t property, std::uint32_t value) {
  xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_CARDINAL, 32, 1,
                      &value);
}

void OpacityPlayer::dropEvents() {
  // Discards errors about windows that no longer exist.
  while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(xcb_)}) continue;
}

}  // namespace vembrix
