#include "platform/linux/labels/PanelConnection.h"

#include <xcb/xfixes.h>

#include <array>
#include <string_view>
#include <utility>

#include "platform/linux/support/XcbEvent.h"
#include "platform/linux/x11/QtEwmh.h"
#include "platform/linux/x11/X11Image.h"

namespace vembrix {
namespace {

constexpr std::uint8_t kTranslucentDepth = 32;
constexpr std::uint8_t kOpaqueDepth = 24;

/// Returns a visual for images of that depth; 0 if there is none.
xcb_visualid_t visualOfDepth(const xcb_screen_t& screen, std::uint8_t wanted) {
  for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
       xcb_depth_next(&depth)) {
    if (depth.data->depth != wanted) continue;
    for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0;
         xcb_visualtype_next(&visual)) {
      if (hasOrderOfImages(*visual.data)) return visual.data->visual_id;
    }
  }
  return 0;
}

}  // namespace

std::shared_ptr<PanelConnection> PanelConnection::current() {
  // Never closed, so that the next label is shown sooner.
  static auto& inUse = *new std::shared_ptr<PanelConnection>;
  if (inUse && !inUse->isBroken()) return inUse;
  inUse = nullptr;
  if (!ewmhOfQt()) return nullptr;
  std::unique_ptr<X11Connection> opened = X11Connection::open();
  if (opened) inUse = std::make_shared<PanelConnection>(std::move(opened));
  return inUse;
}

PanelConnection::PanelConnection(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)) {
  // The server accepts requests only from clients that have stated their version.
  const auto version =
      xcb_xfixes_query_version(xcb(), XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
  xcb_discard_reply(xcb(), version.sequence);
  chooseFormat();
  readAtoms();
}

void PanelConnection::chooseFormat() {
  const xcb_screen_t& screen = *ewmh()->screens[connection_->screen()];
  for (const std::uint8_t depth : {kTranslucentDepth, kOpaqueDepth}) {
    const xcb_visualid_t visual = visualOfDepth(screen, depth);
    if (visual == 0) continue;
    format_ = {depth, visual, xcb_generate_id(xcb())};
    xcb_create_colormap(xcb(), XCB_COLORMAP_ALLOC_NONE, format_.colors, root(), visual);
    return;
  }
}

void PanelConnection::readAtoms() {
  using Named = std::pair<std::string_view, xcb_atom_t*>;
  const std::array wanted = {
      Named("WM_WINDOW_ROLE", &atoms_.role),
      Named("_NET_WM_WINDOW_OPACITY", &atoms_.opacity),
      Named("_COMPTON_SHADOW", &atoms_.shadow),
      Named("_GTK_FRAME_EXTENTS", &atoms_.frameExtents),
      Named("_KDE_NET_WM_WINDOW_TYPE_ON_SCREEN_DISPLAY", &atoms_.onScreenDisplay),
  };
  // Sends all queries before it reads the answers: one round trip.
  std::array<xcb_intern_atom_cookie_t, wanted.size()> cookies{};
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const std::string_view name = wanted[i].first;
    cookies[i] =
        xcb_intern_atom_unchecked(xcb(), 0, static_cast<std::uint16_t>(name.size()), name.data());
  }
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const XcbPtr<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(xcb(), cookies[i], nullptr)};
    if (reply) *wanted[i].second = reply->atom;
  }
}

bool PanelConnection::has(xcb_window_t window) {
  readEvents();
  return !isBroken() && windows_.contains(window);
}

void PanelConnection::readEvents() {
  while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(xcb())}) {
    if (eventType(*event) != XCB_DESTROY_NOTIFY) continue;
    windows_.erase(as<xcb_destroy_notify_event_t>(*event).window);
  }
}

}  // namespace vembrix
