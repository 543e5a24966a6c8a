#include "platform/linux/session/SingleInstance.h"

#include <QCoreApplication>
#include <string_view>
#include <utility>

#include "platform/linux/x11/QtEwmh.h"
#include "platform/linux/x11/X11Connection.h"

namespace vembrix {
namespace {

constexpr std::string_view kSelection = "_VEMBRIX_S0";
constexpr std::string_view kReopen = "_VEMBRIX_REOPEN";

xcb_intern_atom_cookie_t requestAtom(xcb_connection_t* xcb, std::string_view name) {
  return xcb_intern_atom_unchecked(xcb, 0, static_cast<std::uint16_t>(name.size()), name.data());
}

xcb_atom_t atomOf(xcb_connection_t* xcb, xcb_intern_atom_cookie_t cookie) {
  const XcbPtr<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(xcb, cookie, nullptr)};
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace

SingleInstance::SingleInstance(std::function<void()> reopened) : reopened_(std::move(reopened)) {
  const xcb_ewmh_connection_t* ewmh = ewmhOfQt();
  if (!ewmh) return;
  xcb_connection_t* xcb = ewmh->connection;
  const auto selection = requestAtom(xcb, kSelection);
  const auto reopen = requestAtom(xcb, kReopen);
  reopen_ = atomOf(xcb, reopen);
  const xcb_atom_t atom = atomOf(xcb, selection);

  window_ = xcb_generate_id(xcb);
  // Never mapped: it owns the selection and receives messages.
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window_, ewmh->screens[0]->root, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  while (!claim(atom)) {
  }
  if (isFirst_) qApp->installNativeEventFilter(this);
}

SingleInstance::~SingleInstance() {
  if (const xcb_ewmh_connection_t* ewmh = ewmhOfQt(); ewmh && window_ != XCB_WINDOW_NONE) {
    xcb_destroy_window(ewmh->connection, window_);
  }
}

bool SingleInstance::claim(xcb_atom_t selection) {
  xcb_connection_t* xcb = ewmhOfQt()->connection;
  // Grabbed so that two simultaneous starts do not both find it free.
  xcb_grab_server(xcb);
  const XcbPtr<xcb_get_selection_owner_reply_t> reply{xcb_get_selection_owner_reply(
      xcb, xcb_get_selection_owner_unchecked(xcb, selection), nullptr)};
  const xcb_window_t owner = reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
  isFirst_ = owner == XCB_WINDOW_NONE;
  if (isFirst_) xcb_set_selection_owner(xcb, window_, selection, XCB_CURRENT_TIME);
  xcb_ungrab_server(xcb);
  xcb_flush(xcb);
  return isFirst_ || askOwner(owner);
}

bool SingleInstance::askOwner(xcb_window_t owner) const {
  xcb_connection_t* xcb = ewmhOfQt()->connection;
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = owner;
  message.type = reopen_;
  const auto cookie = xcb_send_event_checked(xcb, 0, owner, XCB_EVENT_MASK_NO_EVENT,
                                             reinterpret_cast<const char*>(&message));
  const XcbPtr<xcb_generic_error_t> error{xcb_request_check(xcb, cookie)};
  return !error;
}

bool SingleInstance::nativeEventFilter(const QByteArray& /*eventType*/, void* message,
                                       qintptr* /*result*/) {
  if (vembrix::eventType(*static_cast<const xcb_generic_event_t*>(message)) != XCB_CLIENT_MESSAGE) {
    return false;
  }
  const auto& sent = *static_cast<const xcb_client_message_event_t*>(message);
  if (sent.window != window_ || sent.type != reopen_) return false;
  reopened_();
  return true;
}

}  // namespace vembrix
