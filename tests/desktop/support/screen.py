"""What is on a virtual screen, read from the X server's own frame buffer.

The server keeps it in a file in the X window dump format, so a picture is what
a monitor would show, compositor or not.
"""

import mmap
import struct
import zlib

_HEADER = struct.Struct(">25I")
_COLOR_ENTRY_SIZE = 12


class Picture:
    """Pixels, 8 bits per component; origin at the top left."""

    def __init__(self, width, height, rgb):
        self.width = width
        self.height = height
        self._rgb = rgb

    @classmethod
    def read(cls, frame_buffer_path):
        with open(frame_buffer_path, "rb") as file:
            data = file.read()
        header = _HEADER.unpack_from(data)
        header_size, width, height = header[0], header[4], header[5]
        byte_order, bits_per_pixel, stride, color_count = header[7], header[11], header[12], header[19]
        if byte_order != 0 or bits_per_pixel != 32:
            raise ValueError("expected a frame buffer of 32-bit pixels, least byte first")
        start = header_size + color_count * _COLOR_ENTRY_SIZE
        rgb = bytearray(width * height * 3)
        for y in range(height):
            row = data[start + y * stride : start + y * stride + width * 4]
            line = memoryview(rgb)[y * width * 3 : (y + 1) * width * 3]
            line[0::3], line[1::3], line[2::3] = row[2::4], row[1::4], row[0::4]
        return cls(width, height, bytes(rgb))

    def pixel(self, x, y):
        start = (y * self.width + x) * 3
        return tuple(self._rgb[start : start + 3])

    def crop(self, x, y, width, height):
        rows = []
        for line in range(y, y + height):
            start = (line * self.width + x) * 3
            rows.append(self._rgb[start : start + width * 3])
        return Picture(width, height, b"".join(rows))

    def pixels(self):
        return zip(self._rgb[0::3], self._rgb[1::3], self._rgb[2::3])

    def nearest(self, color):
        """The pixel closest to the colour, and its largest difference in any component."""
        return min(((distance(pixel, color), pixel) for pixel in set(self.pixels())))[::-1]

    def save_png(self, path):
        def chunk(kind, payload):
            body = kind + payload
            return struct.pack(">I", len(payload)) + body + struct.pack(">I", zlib.crc32(body))

        stride = self.width * 3
        lines = b"".join(
            b"\0" + self._rgb[y * stride : (y + 1) * stride] for y in range(self.height)
        )
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            file.write(chunk(b"IHDR", struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)))
            file.write(chunk(b"IDAT", zlib.compress(lines, 6)))
            file.write(chunk(b"IEND", b""))


class Pixels:
    """Single pixels of a screen as they are at the moment, many in the time that a
    picture takes; a context manager."""

    def __init__(self, frame_buffer_path):
        with open(frame_buffer_path, "rb") as file:
            self._memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = _HEADER.unpack_from(self._memory)
        self._start = header[0] + header[19] * _COLOR_ENTRY_SIZE
        self._stride = header[12]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._memory.close()

    def at(self, x, y):
        start = self._start + y * self._stride + x * 4
        blue, green, red = self._memory[start : start + 3]
        return red, green, blue


def distance(a, b):
    return max(abs(x - y) for x, y in zip(a, b))


def rgb(red, green, blue):
    """sRGB components from 0 to 1 as the 8-bit ones of a pixel."""
    return tuple(round(component * 255) for component in (red, green, blue))
