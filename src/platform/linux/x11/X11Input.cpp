#include "platform/linux/x11/X11Input.h"

#include <xcb/xinput.h>

#include <array>
#include <utility>

#include "platform/linux/support/ScreenCoordinates.h"
#include "platform/linux/support/XcbEvent.h"
#include "platform/linux/x11/X11Connection.h"

namespace vembrix {
namespace {

/// Bits of event types, in the form of XInput.
using EventBits = std::uint64_t;
constexpr EventBits bit(int type) {
  return EventBits{1} << static_cast<unsigned>(type);
}
constexpr EventBits kGestures = bit(XCB_INPUT_GESTURE_SWIPE_BEGIN) |
                                bit(XCB_INPUT_GESTURE_SWIPE_UPDATE) |
                                bit(XCB_INPUT_GESTURE_SWIPE_END);

/// The buttons of the core protocol; 4 to 7 are the directions of scrolling.
enum Button : std::uint32_t { Left = 1, Middle = 2, Right = 3, FirstScroll = 4, LastScroll = 7 };

double number(xcb_input_fp1616_t value) {
  return value / 65536.0;
}

/// Returns whether a motion has moved the pointer; smooth scrolling is reported as motion of other
/// axes.
bool movesPointer(const xcb_input_raw_button_press_event_t& motion) {
  constexpr std::uint32_t kXAndY = 0b11;
  return xcb_input_raw_button_press_valuator_mask_length(&motion) > 0 &&
         (*xcb_input_raw_button_press_valuator_mask(&motion) & kXAndY) != 0;
}

bool selectInput(X11Connection& connection, EventBits events) {
  const struct {
    xcb_input_event_mask_t head;
    std::array<std::uint32_t, 2> mask;
  } request{{XCB_INPUT_DEVICE_ALL_MASTER, 2},
            {static_cast<std::uint32_t>(events), static_cast<std::uint32_t>(events >> 32U)}};
  const auto cookie =
      xcb_input_xi_select_events_checked(connection.xcb(), connection.root(), 1, &request.head);
  const XcbPtr<xcb_generic_error_t> error{xcb_request_check(connection.xcb(), cookie)};
  return !error;
}

/// Selects the events of a pointer that a program moves: no device moves, so there is no raw event.
/// The root window receives only those that no other window takes, so no program loses any.
void selectWarps(X11Connection& connection, bool selected) {
  const std::uint32_t events = selected ? XCB_EVENT_MASK_POINTER_MOTION : XCB_EVENT_MASK_NO_EVENT;
  xcb_change_window_attributes(connection.xcb(), connection.root(), XCB_CW_EVENT_MASK, &events);
}

}  // namespace

X11Input& X11Input::shared() {
  // Never destroyed: tokens of monitors may outlive main().
  static auto& input = *new X11Input(X11Connection::open());
  return input;
}

X11Input::X11Input(std::unique_ptr<X11Connection> connection) : monitors_([this] { select(); }) {
  if (!connection) return;
  reader_ = std::make_unique<X11EventReader>(std::move(connection));
  listening_ = reader_->listen(
      {.event = [this](const auto& event) { note(event); }, .batchEnd = [this] { batchEnd(); }});
  reader_->begin();
  findExtension();
  if (extension_ != 0) ownWindows_.emplace(*reader_);
}

X11Input::~X11Input() = default;

void X11Input::findExtension() {
  xcb_connection_t* xcb = reader_->connection().xcb();
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(xcb, &xcb_input_id);
  if (!extension || extension->present == 0) return;
  const XcbPtr<xcb_input_xi_query_version_reply_t> version{xcb_input_xi_query_version_reply(
      xcb, xcb_input_xi_query_version_unchecked(xcb, 2, 4), nullptr)};
  if (!version || version->major_version < 2) return;
  extension_ = extension->major_opcode;
  knowsGestures_ = version->major_version > 2 || version->minor_version >= 4;
}

Token X11Input::addGlobalMonitor(std::uint64_t mask, std::function<void()> handler) {
  if (extension_ == 0) return {};
  return monitors_.add(mask, std::move(handler));
}

void X11Input::followSwipes(std::function<void(const GestureEvent&)> listener) {
  if (!knowsGestures_) return;
  swipe_.emplace(std::move(listener));
  select();
}

void X11Input::select() {
  const std::uint64_t watched = monitors_.mask();
  EventBits events = 0;
  if ((watched & (LeftMouseDown | RightMouseDown | OtherMouseDown)) != 0) {
    events |= bit(XCB_INPUT_RAW_BUTTON_PRESS);
  }
  if ((watched & KeyDown) != 0) events |= bit(XCB_INPUT_RAW_KEY_PRESS);
  if ((watched & MouseMoved) != 0) events |= bit(XCB_INPUT_RAW_MOTION);
  const EventBits withGestures = swipe_ ? events | kGestures : events;
  if (withGestures == selected_) return;
  selected_ = withGestures;
  selectWarps(reader_->connection(), (watched & MouseMoved) != 0);
  // Only one client may have the gestures of the root window. If another one has them, they are
  // given up.
  if (!selectInput(reader_->connection(), withGestures) && swipe_) {
    swipe_.reset();
    selected_ = events;
    selectInput(reader_->connection(), events);
  }
  reader_->readSoon();
}

void X11Input::note(const xcb_generic_event_t& event) {
  const int type = eventType(event);
  if (type == XCB_MOTION_NOTIFY) {
    moved_ |= !ownWindows_->havePointer();
    return;
  }
  if (type != XCB_GE_GENERIC) {
    if (ownWindows_) ownWindows_->note(event);
    return;
  }
  const auto& generic = as<xcb_ge_generic_event_t>(event);
  if (generic.extension == extension_) noteInput(generic);
}

void X11Input::noteInput(const xcb_ge_generic_event_t& event) {
  switch (event.event_type) {
    case XCB_INPUT_RAW_BUTTON_PRESS:
      noteButton(as<xcb_input_raw_button_press_event_t>(event).detail);
      break;
    case XCB_INPUT_RAW_KEY_PRESS:
      if (!ownWindows_->haveKeyboard()) monitors_.deliver(KeyDown);
      break;
    case XCB_INPUT_RAW_MOTION:
      if (!moved_ && !ownWindows_->havePointer()) {
        moved_ = movesPointer(as<xcb_input_raw_button_press_event_t>(event));
      }
      break;
    case XCB_INPUT_GESTURE_SWIPE_BEGIN:
    case XCB_INPUT_GESTURE_SWIPE_UPDATE:
    case XCB_INPUT_GESTURE_SWIPE_END:
      noteSwipe(event);
      break;
    default:
      break;
  }
}

void X11Input::noteButton(std::uint32_t button) {
  if (button >= Button::FirstScroll && button <= Button::LastScroll) return;
  if (ownWindows_->havePointer()) return;
  if (button == Button::Left) {
    monitors_.deliver(LeftMouseDown);
  } else if (button == Button::Right) {
    monitors_.deliver(RightMouseDown);
  } else {
    monitors_.deliver(OtherMouseDown);
  }
}

void X11Input::noteSwipe(const xcb_ge_generic_event_t& event) {
  if (!swipe_) return;
  const auto& gesture = as<xcb_input_gesture_swipe_begin_event_t>(event);
  const TouchpadSwipe::Time time(gesture.time);
  if (event.event_type == XCB_INPUT_GESTURE_SWIPE_BEGIN) {
    swipe_->begin(static_cast<int>(gesture.detail), time);
  } else if (event.event_type == XCB_INPUT_GESTURE_SWIPE_UPDATE) {
    swipe_->update({time, number(gesture.delta_x), number(gesture.delta_y)});
  } else {
    const bool cancelled =
        (gesture.flags & XCB_INPUT_GESTURE_SWIPE_EVENT_FLAGS_GESTURE_SWIPE_CANCELLED) != 0;
    swipe_->end(cancelled ? TouchpadSwipe::Ending::Cancelled : TouchpadSwipe::Ending::Completed);
  }
}

void X11Input::batchEnd() {
  if (!std::exchange(moved_, false)) return;
  inRound_ = true;
  location_.reset();
  monitors_.deliver(MouseMoved);
  inRound_ = false;
}

Point X11Input::mouseLocation() const {
  if (!reader_) return {};
  if (inRound_ && location_) return *location_;
  X11Connection& connection = reader_->connection();
  const XcbPtr<xcb_query_pointer_reply_t> pointer{xcb_query_pointer_reply(
      connection.xcb(), xcb_query_pointer_unchecked(connection.xcb(), connection.root()), nullptr)};
  if (!inRound_) reader_->readSoon();
  if (!pointer) return {};
  location_ = pointOfPixel({pointer->root_x, pointer->root_y});
  return *location_;
}

}  // namespace vembrix
