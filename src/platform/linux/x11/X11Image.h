#pragma once

#include <xcb/xproto.h>

#include <QImage>
#include <QPoint>
#include <cstdint>

namespace vembrix {

// Images for the X server's windows and pixmaps. Main thread.

/// Returns whether pixels of that visual have 8 bits for each colour, in the same order as images.
bool hasOrderOfImages(const xcb_visualtype_t& visual);

/// Draws the image, of 32 bits per pixel, at that corner of the drawable, whose visual must have
/// the pixel order of images. Does not wait.
void putImage(xcb_connection_t* xcb, xcb_drawable_t drawable, std::uint8_t depth,
              const QImage& image, const QPoint& corner);

/// Returns a new pixmap with the image. Does not wait.
xcb_pixmap_t makePixmap(xcb_connection_t* xcb, xcb_drawable_t sameScreen, std::uint8_t depth,
                        const QImage& image);

}  // namespace vembrix
