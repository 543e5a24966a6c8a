#include "platform/linux/menubar/KeyboardLoan.h"

#include <QWindow>

#include "platform/linux/x11/QtEwmh.h"
#include "platform/linux/x11/X11Connection.h"

namespace vembrix {
namespace {

xcb_window_t focusedWindow(xcb_connection_t* xcb) {
  const XcbPtr<xcb_get_input_focus_reply_t> focus{
      xcb_get_input_focus_reply(xcb, xcb_get_input_focus_unchecked(xcb), nullptr)};
  return focus ? focus->focus : xcb_window_t{XCB_WINDOW_NONE};
}

}  // namespace

KeyboardLoan::KeyboardLoan(QWindow& window) : window_(window) {
  xcb_ewmh_connection_t* ewmh = ewmhOfQt();
  if (!ewmh) {
    window.requestActivate();
    return;
  }
  lender_ = focusedWindow(ewmh->connection);
  // Set directly, because Qt would ask the window manager, which does not know the window. The
  // server has mapped it already: Qt's request comes before this one.
  xcb_set_input_focus(ewmh->connection, XCB_INPUT_FOCUS_POINTER_ROOT,
                      static_cast<xcb_window_t>(window.winId()), XCB_CURRENT_TIME);
  xcb_flush(ewmh->connection);
}

KeyboardLoan::~KeyboardLoan() {
  xcb_ewmh_connection_t* ewmh = ewmhOfQt();
  if (!ewmh || lender_ == XCB_WINDOW_NONE) return;
  xcb_connection_t* xcb = ewmh->connection;
  // Another program may have taken the focus meanwhile. If this window was closed first, no window
  // has it.
  const xcb_window_t focused = focusedWindow(xcb);
  const bool isNobodys = focused == XCB_INPUT_FOCUS_NONE || focused == XCB_INPUT_FOCUS_POINTER_ROOT;
  if (!isNobodys && focused != static_cast<xcb_window_t>(window_.winId())) return;
  const auto request =
      xcb_set_input_focus_checked(xcb, XCB_INPUT_FOCUS_POINTER_ROOT, lender_, XCB_CURRENT_TIME);
  // The lender may no longer exist.
  const XcbPtr<xcb_generic_error_t> error{xcb_request_check(xcb, request)};
}

}  // namespace vembrix
