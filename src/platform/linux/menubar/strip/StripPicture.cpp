#include "platform/linux/menubar/strip/StripPicture.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "platform/linux/x11/QtEwmh.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Image.h"

namespace vembrix {
namespace {

/// The memory of about fifty looks of the usual size.
constexpr std::size_t kMaxBytes = std::size_t{512} << 10;

bool isForImages(const xcb_screen_t& screen, xcb_visualid_t visual) {
  for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
       xcb_depth_next(&depth)) {
    const std::span visuals(xcb_depth_visuals(depth.data),
                            static_cast<std::size_t>(xcb_depth_visuals_length(depth.data)));
    const auto found = std::ranges::find(visuals, visual, &xcb_visualtype_t::visual_id);
    if (found != visuals.end()) return hasOrderOfImages(*found);
  }
  return false;
}

/// Removes the protocol by which window managers wait until a program has painted: Qt would answer
/// only when it paints.
void leaveSynchronization(const xcb_ewmh_connection_t& ewmh, xcb_window_t window,
                          const xcb_get_property_reply_t& protocols) {
  const std::span former(static_cast<const xcb_atom_t*>(xcb_get_property_value(&protocols)),
                         protocols.format == 32 ? protocols.value_len : 0);
  std::vector<xcb_atom_t> kept;
  std::ranges::copy_if(former, std::back_inserter(kept),
                       [&](xcb_atom_t atom) { return atom != ewmh._NET_WM_SYNC_REQUEST; });
  xcb_change_property(ewmh.connection, XCB_PROP_MODE_REPLACE, window, ewmh.WM_PROTOCOLS,
                      XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(kept.size()), kept.data());
}

}  // namespace

std::unique_ptr<StripPicture> StripPicture::create(xcb_window_t window) {
  const xcb_ewmh_connection_t* ewmh = ewmhOfQt();
  if (!ewmh) return nullptr;
  std::unique_ptr<StripPicture> picture(new StripPicture);
  picture->setWindow(window);
  return picture->depth_ == 0 ? nullptr : std::move(picture);
}

void StripPicture::setWindow(xcb_window_t window) {
  const xcb_ewmh_connection_t& ewmh = *ewmhOfQt();
  xcb_connection_t* xcb = ewmh.connection;
  // Sends all queries before it reads the answers: one round trip.
  const auto geometryAsked = xcb_get_geometry_unchecked(xcb, window);
  const auto attributesAsked = xcb_get_window_attributes_unchecked(xcb, window);
  const auto protocolsAsked =
      xcb_get_property_unchecked(xcb, 0, window, ewmh.WM_PROTOCOLS, XCB_ATOM_ATOM, 0, 64);
  const XcbPtr<xcb_get_geometry_reply_t> geometry{
      xcb_get_geometry_reply(xcb, geometryAsked, nullptr)};
  const XcbPtr<xcb_get_window_attributes_reply_t> attributes{
      xcb_get_window_attributes_reply(xcb, attributesAsked, nullptr)};
  const XcbPtr<xcb_get_property_reply_t> protocols{
      xcb_get_property_reply(xcb, protocolsAsked, nullptr)};
  window_ = window;
  shown_ = XCB_NONE;
  isMuted_ = false;
  if (!geometry || !attributes || !protocols) return;
  if (!isForImages(*ewmh.screens[0], attributes->visual)) return;
  depth_ = geometry->depth;
  events_ = attributes->your_event_mask;
  leaveSynchronization(ewmh, window, *protocols);
  // After a change of size the server draws the whole background.
  constexpr std::uint32_t kForget = XCB_GRAVITY_BIT_FORGET;
  xcb_change_window_attributes(xcb, window, XCB_CW_BIT_GRAVITY, &kForget);
}

void StripPicture::mute(bool isMuted) {
  if (std::exchange(isMuted_, isMuted) == isMuted) return;
  constexpr std::uint32_t kChanges = XCB_EVENT_MASK_PROPERTY_CHANGE;
  const std::uint32_t events = isMuted ? events_ & ~kChanges : events_;
  xcb_change_window_attributes(ewmhOfQt()->connection, window_, XCB_CW_EVENT_MASK, &events);
}

StripPicture::~StripPicture() {
  for (const Look& look : looks_) xcb_free_pixmap(ewmhOfQt()->connection, look.pixmap);
}

void StripPicture::show(const StatusItemContent& content, const Frame& frame, Shows when,
                        const std::function<QImage()>& paint) {
  find(content, frame, paint);
  const xcb_pixmap_t pixmap = looks_.front().pixmap;
  if (std::exchange(shown_, pixmap) == pixmap) return;
  xcb_connection_t* xcb = ewmhOfQt()->connection;
  xcb_change_window_attributes(xcb, window_, XCB_CW_BACK_PIXMAP, &pixmap);
  if (when == Shows::Now) xcb_clear_area(xcb, 0, window_, 0, 0, 0, 0);
  dropOldest();
}

void StripPicture::find(const StatusItemContent& content, const Frame& frame,
                        const std::function<QImage()>& paint) {
  const auto known = std::ranges::find_if(
      looks_, [&](const Look& look) { return look.frame == frame && look.content == content; });
  if (known != looks_.end()) {
    std::rotate(looks_.begin(), known, std::next(known));
    return;
  }
  const QImage image = paint();
  looks_.insert(looks_.begin(),
                {content, frame, makePixmap(ewmhOfQt()->connection, window_, depth_, image),
                 static_cast<std::size_t>(image.sizeInBytes())});
}

void StripPicture::dropOldest() {
  std::size_t bytes = 0;
  const auto first = std::find_if(looks_.begin(), looks_.end(), [&](const Look& look) {
    bytes += look.bytes;
    return bytes > kMaxBytes && &look != &looks_.front();
  });
  for (auto look = first; look != looks_.end(); ++look) {
    xcb_free_pixmap(ewmhOfQt()->connection, look->pixmap);
  }
  looks_.erase(first, looks_.end());
}

}  // namespace vembrix
