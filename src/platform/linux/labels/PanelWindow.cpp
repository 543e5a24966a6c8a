#include "platform/linux/labels/PanelWindow.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/labels/OpacityPlayer.h"
#include "platform/linux/labels/PanelConnection.h"
#include "platform/linux/x11/X11Image.h"

namespace vembrix {
namespace {

// A constant of the shape extension; its library is not worth linking for two numbers.
constexpr xcb_shape_kind_t kBoundingShape = 0;
constexpr xcb_shape_kind_t kInputShape = 2;

/// The instance and the class, each terminated by NUL.
constexpr std::string_view kClass("vembrix\0Vembrix\0", 16);

void setText(const PanelConnection& connection, xcb_window_t window, xcb_atom_t property,
             xcb_atom_t type, std::string_view text) {
  xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                      static_cast<std::uint32_t>(text.size()), text.data());
}

void setNumbers(const PanelConnection& connection, xcb_window_t window, xcb_atom_t property,
                std::span<const std::uint32_t> numbers) {
  xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_CARDINAL,
                      32, static_cast<std::uint32_t>(numbers.size()), numbers.data());
}

/// Replaces one of the window's shapes by the region.
void setShapeRegion(const PanelConnection& connection, xcb_window_t window, xcb_shape_kind_t kind,
                    std::span<const xcb_rectangle_t> rectangles) {
  xcb_connection_t* xcb = connection.xcb();
  const xcb_xfixes_region_t region = xcb_generate_id(xcb);
  xcb_xfixes_create_region(xcb, region, static_cast<std::uint32_t>(rectangles.size()),
                           rectangles.data());
  xcb_xfixes_set_window_shape_region(xcb, window, kind, 0, 0, region);
  xcb_xfixes_destroy_region(xcb, region);
}

std::uint32_t opacityValue(double opacity) {
  constexpr auto kOpaque = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(std::llround(std::clamp(opacity, 0.0, 1.0) * kOpaque));
}

}  // namespace

std::unique_ptr<PanelWindow> PanelWindow::create(const QString& role) {
  auto connection = PanelConnection::current();
  if (!connection || connection->format().depth == 0) return nullptr;
  return std::unique_ptr<PanelWindow>(new PanelWindow(std::move(connection), role));
}

PanelWindow::PanelWindow(std::shared_ptr<PanelConnection> connection, const QString& role)
    : connection_(std::move(connection)), id_(xcb_generate_id(connection_->xcb())) {
  const PanelConnection::Format& format = connection_->format();
  // In the order of the mask: background and border pixel, override-redirect, events, colours.
  const std::uint32_t mask = XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT |
                             XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
  const std::array<std::uint32_t, 5> values = {XCB_BACK_PIXMAP_NONE, 0, 1,
                                               XCB_EVENT_MASK_STRUCTURE_NOTIFY, format.colors};
  xcb_create_window(connection_->xcb(), format.depth, id_, connection_->root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, format.visual, mask, values.data());
  connection_->add(id_);
  setText(*connection_, id_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, kClass);
  setText(*connection_, id_, connection_->atoms().role, XCB_ATOM_STRING, role.toStdString());
  // Programs decide by the type how to draw and animate a window.
  std::array types = {connection_->atoms().onScreenDisplay,
                      connection_->ewmh()->_NET_WM_WINDOW_TYPE_NOTIFICATION};
  xcb_ewmh_set_wm_window_type(connection_->ewmh(), id_, types.size(), types.data());
  setShapeRegion(*connection_, id_, kInputShape, {});
}

PanelWindow::~PanelWindow() {
  stopOpacities();
  connection_->remove(id_);
  xcb_destroy_window(connection_->xcb(), id_);
  connection_->flush();
}

bool PanelWindow::isLost() {
  return !connection_->has(id_);
}

bool PanelWindow::canBeTranslucent() const {
  return connection_->format().depth == 32;
}

void PanelWindow::setName(const QString& name) {
  if (name_ == name) return;
  name_ = name;
  const std::string text = name.toStdString();
  const xcb_ewmh_connection_t& atoms = *connection_->ewmh();
  setText(*connection_, id_, XCB_ATOM_WM_NAME, atoms.UTF8_STRING, text);
  setText(*connection_, id_, atoms._NET_WM_NAME, atoms.UTF8_STRING, text);
}

void PanelWindow::setGeometry(const QRect& geometry) {
  if (geometry_ == geometry) return;
  geometry_ = geometry;
  const std::array<std::uint32_t, 4> values = {
      static_cast<std::uint32_t>(geometry.x()), static_cast<std::uint32_t>(geometry.y()),
      static_cast<std::uint32_t>(std::max(geometry.width(), 1)),
      static_cast<std::uint32_t>(std::max(geometry.height(), 1))};
  xcb_configure_window(connection_->xcb(), id_,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       values.data());
}

void PanelWindow::setPicture(const QImage& picture) {
  xcb_connection_t* xcb = connection_->xcb();
  const xcb_pixmap_t pixmap = makePixmap(xcb, id_, connection_->format().depth, picture);
  xcb_change_window_attributes(xcb, id_, XCB_CW_BACK_PIXMAP, &pixmap);
  // The window keeps the picture.
  xcb_free_pixmap(xcb, pixmap);
  xcb_clear_area(xcb, 0, id_, 0, 0, 0, 0);
  connection_->flush();
  bytes_ = picture.sizeInBytes();
}

void PanelWindow::paint(const QImage& part, const QPoint& corner) {
  putImage(connection_->xcb(), id_, connection_->format().depth, part, corner);
  connection_->flush();
}

void PanelWindow::setShape(const QRegion& shape) {
  if (shape.isEmpty()) {
    xcb_xfixes_set_window_shape_region(connection_->xcb(), id_, kBoundingShape, 0, 0,
                                       XCB_XFIXES_REGION_NONE);
    return;
  }
  std::vector<xcb_rectangle_t> rectangles;
  for (const QRect& part : shape) {
    rectangles.push_back({static_cast<std::int16_t>(part.x()), static_cast<std::int16_t>(part.y()),
                          static_cast<std::uint16_t>(part.width()),
                          static_cast<std::uint16_t>(part.height())});
  }
  setShapeRegion(*connection_, id_, kBoundingShape, rectangles);
}

void PanelWindow::setShadow(int extent) {
  constexpr std::uint32_t kNone = 0;
  setNumbers(*connection_, id_, connection_->atoms().shadow, std::span(&kNone, 1));
  std::array<std::uint32_t, 4> extents{};
  extents.fill(static_cast<std::uint32_t>(extent));
  setNumbers(*connection_, id_, connection_->atoms().frameExtents, extents);
}

void PanelWindow::sendOpacity(double opacity) {
  if (std::exchange(opacity_, opacity) == opacity) return;
  const std::uint32_t value = opacityValue(opacity);
  setNumbers(*connection_, id_, connection_->atoms().opacity, std::span(&value, 1));
}

void PanelWindow::setOpacity(double opacity) {
  if (player_) {
    connection_->flush();
    player_->set(id_, connection_->atoms().opacity, opacityValue(opacity));
    return;
  }
  sendOpacity(opacity);
  connection_->flush();
}

bool PanelWindow::playOpacities(std::chrono::milliseconds interval,
                                std::span<const double> opacities) {
  constexpr std::size_t kMost = 128;
  auto player = OpacityPlayer::current();
  if (!player || player->isPlaying() || opacities.size() > kMost) return false;
  std::array<std::uint32_t, kMost> values{};
  std::ranges::transform(opacities, values.begin(), opacityValue);
  player->play(id_, connection_->atoms().opacity, interval,
               std::span(values).first(opacities.size()));
  player_ = std::move(player);
  isPlaying_ = true;
  opacity_ = -1;
  return true;
}

void PanelWindow::stopOpacities() {
  if (std::exchange(isPlaying_, false)) player_->stop(connection_->xcb());
}

void PanelWindow::show(double opacity) {
  player_.reset();
  // Set before mapping, so that the window appears with this opacity.
  sendOpacity(opacity);
  putInFront();
  xcb_map_window(connection_->xcb(), id_);
  connection_->flush();
}

void PanelWindow::raise() {
  putInFront();
  connection_->flush();
}

void PanelWindow::putInFront() const {
  constexpr std::uint32_t kAbove = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(connection_->xcb(), id_, XCB_CONFIG_WINDOW_STACK_MODE, &kAbove);
}

void PanelWindow::hide() {
  xcb_unmap_window(connection_->xcb(), id_);
  connection_->flush();
}

}  // namespace vembrix
