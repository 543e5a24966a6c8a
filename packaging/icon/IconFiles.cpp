#include "IconFiles.h"

#include <zlib.h>

#include <cstddef>
#include <stdexcept>

namespace icon {
namespace {

void appendNumber(std::string& bytes, std::size_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes += static_cast<char>((number >> static_cast<unsigned>(shift)) & 0xFFU);
  }
}

const Bytef* raw(const std::string& bytes) {
  return reinterpret_cast<const Bytef*>(bytes.data());
}

void appendChunk(std::string& file, const std::string& type, const std::string& data) {
  const std::string checked = type + data;
  appendNumber(file, data.size());
  file += checked;
  appendNumber(file, crc32(0, raw(checked), static_cast<uInt>(checked.size())));
}

std::string deflated(const std::string& bytes) {
  uLongf size = compressBound(static_cast<uLong>(bytes.size()));
  std::string result(size, '\0');
  if (compress2(reinterpret_cast<Bytef*>(result.data()), &size, raw(bytes),
                static_cast<uLong>(bytes.size()), Z_BEST_COMPRESSION) != Z_OK) {
    throw std::runtime_error("the picture cannot be compressed");
  }
  result.resize(size);
  return result;
}

/// Returns each line as the difference from the one above, which is small for gradients.
std::string filtered(const Picture& picture) {
  constexpr char kUp = 2;
  const auto line = static_cast<std::size_t>(picture.side) * 4;
  std::string bytes;
  bytes.reserve(picture.pixels.size() + static_cast<std::size_t>(picture.side));
  for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
    if (i % line == 0) bytes += kUp;
    const int above = i < line ? 0 : picture.pixels[i - line];
    bytes += static_cast<char>(picture.pixels[i] - above);
  }
  return bytes;
}

}  // namespace

std::string png(const Picture& picture) {
  std::string header;
  const auto side = static_cast<std::size_t>(picture.side);
  appendNumber(header, side);
  appendNumber(header, side);
  // 8 bits, RGBA, and the only defined methods.
  header += std::string("\x08\x06\0\0\0", 5);
  std::string file = "\x89PNG\r\n\x1a\n";
  appendChunk(file, "IHDR", header);
  // Colours are sRGB.
  appendChunk(file, "sRGB", std::string(1, '\0'));
  appendChunk(file, "IDAT", deflated(filtered(picture)));
  appendChunk(file, "IEND", {});
  return file;
}

std::string icns(const std::vector<std::pair<std::string, std::string>>& entries) {
  constexpr std::size_t kHeader = 8;
  std::string body;
  for (const auto& [type, data] : entries) {
    body += type;
    appendNumber(body, data.size() + kHeader);
    body += data;
  }
  std::string file = "icns";
  appendNumber(file, body.size() + kHeader);
  return file + body;
}

}  // namespace icon
