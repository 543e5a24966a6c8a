#include "platform/linux/BinaryPropertyList.h"

#include <plist/plist.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/NestingLimit.h"
#include "platform/linux/XmlText.h"

namespace vembrix {
namespace {

constexpr std::string_view kMagic = "bplist00";
constexpr std::size_t kTrailerSize = 32;
constexpr std::size_t kUnfoldedLimit = std::size_t{64} << 20;
/// What a value without contents takes in memory, roughly.
constexpr std::size_t kNodeSize = 128;

/// The skeleton of a binary list: which object refers to which. libplist
/// follows references recursively and copies an object for each of them, so few
/// bytes could use up the stack or all memory; this sees it before.
class BinaryOutline {
 public:
  explicit BinaryOutline(std::string_view bytes) : bytes_(bytes) {}

  bool isSound() { return readTrailer() && unfoldedSize(topObject_) > 0; }

 private:
  /// Where the contents of an object begin, and how many units they are.
  struct Extent {
    std::size_t offset = 0;
    std::size_t count = 0;
  };

  bool readTrailer();
  /// Bytes of the object and of all it refers to; 0 when they are too many, or
  /// malformed, or nested too deep or in themselves.
  std::size_t unfoldedSize(std::size_t object);
  std::size_t sizeOfReferences(Extent extent, std::size_t perUnit);
  std::optional<Extent> extentAt(std::size_t offset) const;
  std::uint64_t bigEndian(std::size_t offset, std::size_t size) const;
  std::uint8_t byte(std::size_t offset) const { return static_cast<std::uint8_t>(bytes_[offset]); }

  std::string_view bytes_;
  std::size_t objectsEnd_ = 0;
  std::size_t offsetSize_ = 0;
  std::size_t referenceSize_ = 0;
  std::size_t topObject_ = 0;
  /// Per object, as far as known.
  std::vector<std::size_t> sizes_;
  int depth_ = 0;
};

bool isIntegerSize(std::size_t size) {
  return (size >= 1 && size <= 4) || size == 8;
}

bool BinaryOutline::readTrailer() {
  if (bytes_.size() < kMagic.size() + kTrailerSize) return false;
  const std::size_t trailer = bytes_.size() - kTrailerSize;
  offsetSize_ = byte(trailer + 6);
  referenceSize_ = byte(trailer + 7);
  const std::uint64_t count = bigEndian(trailer + 8, 8);
  const std::uint64_t top = bigEndian(trailer + 16, 8);
  const std::uint64_t table = bigEndian(trailer + 24, 8);
  if (!isIntegerSize(offsetSize_) || !isIntegerSize(referenceSize_)) return false;
  if (table <= kMagic.size() || table > trailer) return false;
  if (top >= count || count > (trailer - table) / offsetSize_) return false;
  objectsEnd_ = table;
  topObject_ = top;
  sizes_.assign(count, 0);
  return true;
}

std::size_t BinaryOutline::unfoldedSize(std::size_t object) {
  if (object >= sizes_.size() || depth_ == kNestingLimit) return 0;
  if (sizes_[object] > 0) return sizes_[object];
  const std::uint64_t offset = bigEndian(objectsEnd_ + object * offsetSize_, offsetSize_);
  if (offset < kMagic.size() || offset >= objectsEnd_) return 0;
  const std::optional<Extent> extent = extentAt(offset);
  if (!extent) return 0;
  depth_ += 1;
  std::size_t size = 0;
  switch (byte(offset) >> 4) {
    case 0xA:
    case 0xC:
      size = sizeOfReferences(*extent, 1);
      break;
    case 0xD:
      size = sizeOfReferences(*extent, 2);
      break;
    case 0x4:
    case 0x5:
    case 0x6:
      // At worst each unit becomes one that XML writes as a reference.
      size = kNodeSize + 8 * extent->count;
      break;
    default:
      size = kNodeSize;
      break;
  }
  depth_ -= 1;
  sizes_[object] = size <= kUnfoldedLimit ? size : 0;
  return sizes_[object];
}

std::size_t BinaryOutline::sizeOfReferences(Extent extent, std::size_t perUnit) {
  if (extent.count > (objectsEnd_ - extent.offset) / (perUnit * referenceSize_)) return 0;
  std::size_t sum = kNodeSize;
  for (std::size_t i = 0; i < perUnit * extent.count; ++i) {
    const std::size_t size =
        unfoldedSize(bigEndian(extent.offset + i * referenceSize_, referenceSize_));
    sum += size;
    if (size == 0 || sum > kUnfoldedLimit) return 0;
  }
  return sum;
}

std::optional<BinaryOutline::Extent> BinaryOutline::extentAt(std::size_t offset) const {
  Extent extent{offset + 1, byte(offset) & 0xFU};
  if (extent.count != 0xF) return extent;
  // The count stands behind as an integer.
  if (extent.offset >= objectsEnd_ || byte(extent.offset) >> 4 != 1) return std::nullopt;
  const unsigned exponent = byte(extent.offset) & 0xFU;
  const std::size_t size = std::size_t{1} << exponent;
  extent.offset += 1;
  if (exponent > 3 || size > objectsEnd_ - extent.offset) return std::nullopt;
  extent.count = bigEndian(extent.offset, size);
  extent.offset += size;
  // More than bytes are left, even if each unit took but one.
  return extent.count <= objectsEnd_ - extent.offset ? std::optional(extent) : std::nullopt;
}

std::uint64_t BinaryOutline::bigEndian(std::size_t offset, std::size_t size) const {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < size; ++i) value = value << 8 | byte(offset + i);
  return value;
}

struct PlistDeleter {
  void operator()(void* plist) const { plist_free(plist); }
};
struct PlistTextDeleter {
  void operator()(char* text) const { plist_to_xml_free(text); }
};

}  // namespace

bool isBinaryPropertyList(std::string_view bytes) {
  return bytes.starts_with(kMagic);
}

std::optional<QString> xmlFromBinaryPropertyList(std::string_view bytes) {
  if (bytes.size() > kUnfoldedLimit || !BinaryOutline(bytes).isSound()) return std::nullopt;
  plist_t parsed = nullptr;
  plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &parsed);
  const std::unique_ptr<void, PlistDeleter> list(parsed);
  if (!list) return std::nullopt;
  char* text = nullptr;
  std::uint32_t length = 0;
  plist_to_xml(list.get(), &text, &length);
  const std::unique_ptr<char, PlistTextDeleter> xml(text);
  if (!xml) return std::nullopt;
  // libplist writes the characters of strings as they are.
  return xmlText({xml.get(), length}).replace(u'\r', QStringLiteral("&#13;"));
}

}  // namespace vembrix
