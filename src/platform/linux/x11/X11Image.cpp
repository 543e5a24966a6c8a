#include "platform/linux/x11/X11Image.h"

#include <xcb/xcb.h>

#include <QtEndian>
#include <algorithm>

namespace vembrix {

bool hasOrderOfImages(const xcb_visualtype_t& visual) {
  return visual._class == XCB_VISUAL_CLASS_TRUE_COLOR && visual.red_mask == 0xFF0000 &&
         visual.green_mask == 0xFF00 && visual.blue_mask == 0xFF;
}

void putImage(xcb_connection_t* xcb, xcb_drawable_t drawable, std::uint8_t depth,
              const QImage& image, const QPoint& corner) {
  if (image.isNull()) return;
  const xcb_setup_t* setup = xcb_get_setup(xcb);
  // A copy shares the pixels.
  QImage ordered = image;
  if ((setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST) != (Q_BYTE_ORDER == Q_LITTLE_ENDIAN)) {
    qbswap<4>(image.constBits(), image.sizeInBytes() / 4, ordered.bits());
  }
  const xcb_gcontext_t context = xcb_generate_id(xcb);
  xcb_create_gc(xcb, context, drawable, 0, nullptr);
  // Sends as many lines at a time as fit into a request, in units of 4 bytes.
  const auto perLine = static_cast<int>(ordered.bytesPerLine());
  const int lines = std::max((int{setup->maximum_request_length} * 4 - 64) / perLine, 1);
  for (int y = 0; y < ordered.height(); y += lines) {
    const int height = std::min(lines, ordered.height() - y);
    xcb_put_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, context,
                  static_cast<std::uint16_t>(ordered.width()), static_cast<std::uint16_t>(height),
                  static_cast<std::int16_t>(corner.x()), static_cast<std::int16_t>(corner.y() + y),
                  0, depth, static_cast<std::uint32_t>(height * perLine), ordered.constScanLine(y));
  }
  xcb_free_gc(xcb, context);
}

xcb_pixmap_t makePixmap(xcb_connection_t* xcb, xcb_drawable_t sameScreen, std::uint8_t depth,
                        const QImage& image) {
  const xcb_pixmap_t pixmap = xcb_generate_id(xcb);
  xcb_create_pixmap(xcb, depth, pixmap, sameScreen, static_cast<std::uint16_t>(image.width()),
                    static_cast<std::uint16_t>(image.height()));
  putImage(xcb, pixmap, depth, image, {});
  return pixmap;
}

}  // namespace vembrix
