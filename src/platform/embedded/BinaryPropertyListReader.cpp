#include "platform/embedded/BinaryPropertyListReader.h"

#include <bit>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "platform/NestingLimit.h"
#include "platform/Utf8.h"

namespace vembrix {
namespace {

constexpr std::size_t kTrailerSize = 32;
/// What a list may grow to when each reference to an object counts as another
/// copy of it: few bytes could otherwise stand for more than any memory holds.
constexpr std::size_t kUnfoldedLimit = std::size_t{64} << 20;

class BinaryReader {
 public:
  explicit BinaryReader(std::string_view bytes) : bytes_(bytes) {}

  std::optional<PropertyList> read();

 private:
  struct Object {
    PropertyList value;
    /// Bytes of the object and of all it refers to; 0 while it is not read yet.
    std::size_t unfoldedSize = 0;
  };
  /// Where the contents of an object of variable length begin.
  struct Extent {
    std::size_t offset = 0;
    std::size_t count = 0;
  };

  bool readTrailer();
  const Object* object(std::size_t index);
  std::optional<Object> readObject(std::size_t offset);
  std::optional<Object> readArray(std::size_t offset);
  std::optional<Object> readDictionary(std::size_t offset);
  std::optional<PropertyList> readScalar(std::size_t offset) const;
  std::optional<PropertyList> readInteger(std::size_t offset, unsigned sizeExponent) const;
  std::optional<PropertyList> readReal(std::size_t offset, unsigned sizeExponent) const;
  std::optional<PropertyList> readAscii(Extent extent) const;
  std::optional<PropertyList> readUtf16(Extent extent) const;

  /// The extent of `count` units of that many bytes; nothing when they do not
  /// lie within the objects.
  std::optional<Extent> extent(std::size_t offset, std::size_t unit) const;
  std::optional<std::uint64_t> bigEndian(std::size_t offset, std::size_t size) const;
  std::size_t reference(std::size_t offset) const;
  std::uint8_t byte(std::size_t offset) const { return static_cast<std::uint8_t>(bytes_[offset]); }

  std::string_view bytes_;
  /// End of the objects, start of the offset table.
  std::size_t objectsEnd_ = 0;
  std::size_t offsetSize_ = 0;
  std::size_t referenceSize_ = 0;
  std::size_t topObject_ = 0;
  std::vector<Object> objects_;
  int depth_ = 0;
};

std::optional<PropertyList> BinaryReader::read() {
  if (!readTrailer()) return std::nullopt;
  const Object* top = object(topObject_);
  return top ? std::optional(top->value) : std::nullopt;
}

bool BinaryReader::readTrailer() {
  if (bytes_.size() < kBinaryPropertyListMagic.size() + kTrailerSize) return false;
  const std::size_t trailer = bytes_.size() - kTrailerSize;
  objectsEnd_ = bytes_.size();
  offsetSize_ = byte(trailer + 6);
  referenceSize_ = byte(trailer + 7);
  const std::uint64_t count = *bigEndian(trailer + 8, 8);
  const std::uint64_t top = *bigEndian(trailer + 16, 8);
  const std::uint64_t table = *bigEndian(trailer + 24, 8);
  if (offsetSize_ < 1 || offsetSize_ > 8 || referenceSize_ < 1 || referenceSize_ > 8) return false;
  if (table <= kBinaryPropertyListMagic.size() || table > trailer) return false;
  if (top >= count || count > (trailer - table) / offsetSize_) return false;
  topObject_ = top;
  objectsEnd_ = table;
  objects_.resize(count);
  return true;
}

const BinaryReader::Object* BinaryReader::object(std::size_t index) {
  if (index >= objects_.size()) return nullptr;
  if (objects_[index].unfoldedSize > 0) return &objects_[index];
  // Also ends lists that contain themselves.
  if (depth_ == kNestingLimit) return nullptr;
  const std::size_t entry = objectsEnd_ + index * offsetSize_;
  std::uint64_t offset = 0;
  for (std::size_t i = 0; i < offsetSize_; ++i) offset = offset << 8 | byte(entry + i);
  if (offset < kBinaryPropertyListMagic.size() || offset >= objectsEnd_) return nullptr;
  depth_ += 1;
  std::optional<Object> read = readObject(offset);
  depth_ -= 1;
  if (!read || read->unfoldedSize > kUnfoldedLimit) return nullptr;
  objects_[index] = std::move(*read);
  return &objects_[index];
}

std::optional<BinaryReader::Object> BinaryReader::readObject(std::size_t offset) {
  switch (byte(offset) >> 4) {
    case 0xA:
      return readArray(offset);
    case 0xD:
      return readDictionary(offset);
    default:
      break;
  }
  std::optional<PropertyList> value = readScalar(offset);
  if (!value) return std::nullopt;
  std::size_t size = sizeof(Object);
  if (const std::string* string = value->asString()) size += string->size();
  if (const PropertyList::Data* data = value->asData()) size += data->size();
  return Object{std::move(*value), size};
}

std::optional<BinaryReader::Object> BinaryReader::readArray(std::size_t offset) {
  const std::optional<Extent> extent = this->extent(offset, referenceSize_);
  if (!extent) return std::nullopt;
  PropertyList::Array elements;
  std::size_t size = sizeof(Object);
  for (std::size_t i = 0; i < extent->count; ++i) {
    const Object* element = object(reference(extent->offset + i * referenceSize_));
    if (!element || size > kUnfoldedLimit) return std::nullopt;
    size += element->unfoldedSize;
    elements.push_back(element->value);
  }
  return Object{std::move(elements), size};
}

std::optional<BinaryReader::Object> BinaryReader::readDictionary(std::size_t offset) {
  const std::optional<Extent> extent = this->extent(offset, 2 * referenceSize_);
  if (!extent) return std::nullopt;
  PropertyList::Dictionary entries;
  std::size_t size = sizeof(Object);
  const std::size_t values = extent->offset + extent->count * referenceSize_;
  for (std::size_t i = 0; i < extent->count; ++i) {
    const Object* key = object(reference(extent->offset + i * referenceSize_));
    const std::string* name = key ? key->value.asString() : nullptr;
    if (!name || size > kUnfoldedLimit) return std::nullopt;
    size += key->unfoldedSize;
    const Object* value = object(reference(values + i * referenceSize_));
    if (!value) return std::nullopt;
    size += value->unfoldedSize;
    entries.insert_or_assign(*name, value->value);
  }
  return Object{std::move(entries), size};
}

std::optional<PropertyList> BinaryReader::readScalar(std::size_t offset) const {
  const std::uint8_t marker = byte(offset);
  const unsigned low = marker & 0xFU;
  switch (marker >> 4) {
    case 0x0:
      if (marker == 0x08 || marker == 0x09) return PropertyList(marker == 0x09);
      return std::nullopt;
    case 0x1:
      return readInteger(offset + 1, low);
    case 0x2:
      return readReal(offset + 1, low);
    case 0x3:
      if (const auto bits = low == 3 ? bigEndian(offset + 1, 8) : std::nullopt) {
        return PropertyList(PropertyList::Date{std::bit_cast<double>(*bits)});
      }
      return std::nullopt;
    case 0x4:
      if (const auto extent = this->extent(offset, 1)) {
        const std::string_view data = bytes_.substr(extent->offset, extent->count);
        return PropertyList(PropertyList::Data(data.begin(), data.end()));
      }
      return std::nullopt;
    case 0x5:
      if (const auto extent = this->extent(offset, 1)) return readAscii(*extent);
      return std::nullopt;
    case 0x6:
      if (const auto extent = this->extent(offset, 2)) return readUtf16(*extent);
      return std::nullopt;
    case 0x8:
      if (const auto uid = low < 8 ? bigEndian(offset + 1, low + 1) : std::nullopt) {
        return PropertyList(PropertyList::Dictionary{{"CF$UID", static_cast<std::int64_t>(*uid)}});
      }
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

std::optional<PropertyList> BinaryReader::readInteger(std::size_t offset,
                                                      unsigned sizeExponent) const {
  if (sizeExponent > 4) return std::nullopt;
  if (sizeExponent < 4) {
    // Up to four bytes without a sign, eight with one.
    const auto bits = bigEndian(offset, std::size_t{1} << sizeExponent);
    return bits ? std::optional(PropertyList(static_cast<std::int64_t>(*bits))) : std::nullopt;
  }
  const auto high = bigEndian(offset, 8);
  const auto low = bigEndian(offset + 8, 8);
  if (!high || !low) return std::nullopt;
  const bool negative = *low >> 63 != 0;
  if (*high == 0 && negative) return PropertyList(static_cast<double>(*low));
  if (*high != (negative ? std::numeric_limits<std::uint64_t>::max() : 0)) return std::nullopt;
  return PropertyList(static_cast<std::int64_t>(*low));
}

std::optional<PropertyList> BinaryReader::readReal(std::size_t offset,
                                                   unsigned sizeExponent) const {
  if (sizeExponent == 2) {
    const auto bits = bigEndian(offset, 4);
    if (!bits) return std::nullopt;
    return PropertyList(double{std::bit_cast<float>(static_cast<std::uint32_t>(*bits))});
  }
  const auto bits = sizeExponent == 3 ? bigEndian(offset, 8) : std::nullopt;
  return bits ? std::optional(PropertyList(std::bit_cast<double>(*bits))) : std::nullopt;
}

std::optional<PropertyList> BinaryReader::readAscii(Extent extent) const {
  const std::string_view text = bytes_.substr(extent.offset, extent.count);
  for (const char c : text) {
    if (static_cast<std::uint8_t>(c) >= 0x80) return std::nullopt;
  }
  return PropertyList(std::string(text));
}

std::optional<PropertyList> BinaryReader::readUtf16(Extent extent) const {
  std::string text;
  for (std::size_t i = 0; i < extent.count; ++i) {
    char32_t unit = static_cast<char32_t>(*bigEndian(extent.offset + 2 * i, 2));
    if (unit >= 0xD800 && unit <= 0xDFFF) {
      const bool isHigh = unit <= 0xDBFF && i + 1 < extent.count;
      const std::uint64_t low = isHigh ? *bigEndian(extent.offset + 2 * i + 2, 2) : 0;
      if (low >= 0xDC00 && low <= 0xDFFF) {
        unit = 0x10000 + ((unit - 0xD800) << 10) + static_cast<char32_t>(low - 0xDC00);
        i += 1;
      } else {
        unit = U'\uFFFD';
      }
    }
    appendUtf8(text, unit);
  }
  return PropertyList(std::move(text));
}

std::optional<BinaryReader::Extent> BinaryReader::extent(std::size_t offset,
                                                         std::size_t unit) const {
  std::uint64_t count = byte(offset) & 0xFU;
  offset += 1;
  if (count == 0xF) {
    // The count stands behind as an integer.
    if (offset >= objectsEnd_ || byte(offset) >> 4 != 1 || (byte(offset) & 0xF) > 3) return {};
    const std::size_t size = std::size_t{1} << (byte(offset) & 0xF);
    const auto stated = bigEndian(offset + 1, size);
    if (!stated) return std::nullopt;
    count = *stated;
    offset += 1 + size;
  }
  if (count > (objectsEnd_ - offset) / unit) return std::nullopt;
  return Extent{offset, static_cast<std::size_t>(count)};
}

std::optional<std::uint64_t> BinaryReader::bigEndian(std::size_t offset, std::size_t size) const {
  if (offset > objectsEnd_ || size > objectsEnd_ - offset) return std::nullopt;
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < size; ++i) value = value << 8 | byte(offset + i);
  return value;
}

std::size_t BinaryReader::reference(std::size_t offset) const {
  return *bigEndian(offset, referenceSize_);
}

}  // namespace

std::optional<PropertyList> readBinaryPropertyList(std::string_view bytes) {
  return BinaryReader(bytes).read();
}

}  // namespace vembrix
