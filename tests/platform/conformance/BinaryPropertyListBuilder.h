#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/PropertyList.h"

namespace vembrix {

/// Writes property lists in the binary form (version 00) object by object, so
/// that a test can write any, also ones that no serious program writes.
/// References to objects are their numbers in the order of their making.
class BinaryPropertyListBuilder {
 public:
  using Reference = std::uint32_t;

  Reference boolean(bool value) { return add(std::string(1, value ? '\x09' : '\x08')); }
  /// `size` is 1, 2, 4 or 8; only those of 8 bytes have a sign.
  Reference integer(std::int64_t value, std::size_t size) {
    return add(static_cast<char>(0x10 + std::countr_zero(size)) +
               bigEndian(static_cast<std::uint64_t>(value), size));
  }
  Reference real(double value) {
    return add('\x23' + bigEndian(std::bit_cast<std::uint64_t>(value), 8));
  }
  Reference date(double seconds) {
    return add('\x33' + bigEndian(std::bit_cast<std::uint64_t>(seconds), 8));
  }
  Reference data(const PropertyList::Data& value) {
    return add(marker(0x40, value.size()) + std::string(value.begin(), value.end()));
  }
  Reference ascii(std::string_view text) {
    return add(marker(0x50, text.size()) + std::string(text));
  }
  Reference utf16(std::u16string_view text) {
    std::string object = marker(0x60, text.size());
    for (const char16_t unit : text) object += bigEndian(unit, 2);
    return add(object);
  }
  /// `size` is the number of bytes.
  Reference uid(std::uint64_t value, std::size_t size) {
    return add(static_cast<char>(0x80 + size - 1) + bigEndian(value, size));
  }
  Reference array(const std::vector<Reference>& elements) {
    std::string object = marker(0xA0, elements.size());
    for (const Reference element : elements) object += bigEndian(element, kReferenceSize);
    return add(object);
  }
  Reference dictionary(const std::vector<std::pair<Reference, Reference>>& entries) {
    std::string object = marker(0xD0, entries.size());
    for (const auto& [key, value] : entries) object += bigEndian(key, kReferenceSize);
    for (const auto& [key, value] : entries) object += bigEndian(value, kReferenceSize);
    return add(object);
  }
  /// An object of any bytes.
  Reference add(std::string_view object) {
    offsets_.push_back(bytes_.size());
    bytes_ += object;
    return static_cast<Reference>(offsets_.size() - 1);
  }

  /// The whole list with that object at the top.
  std::string bytes(Reference top) const {
    std::string all = bytes_;
    for (const std::size_t offset : offsets_) all += bigEndian(offset, kOffsetSize);
    all += std::string(6, '\0');
    all += static_cast<char>(kOffsetSize);
    all += static_cast<char>(kReferenceSize);
    return all + bigEndian(offsets_.size(), 8) + bigEndian(top, 8) + bigEndian(bytes_.size(), 8);
  }

 private:
  static constexpr std::size_t kReferenceSize = 4;
  static constexpr std::size_t kOffsetSize = 4;

  static std::string bigEndian(std::uint64_t value, std::size_t size) {
    std::string bytes;
    for (std::size_t i = size; i > 0; --i) bytes += static_cast<char>(value >> (8 * (i - 1)));
    return bytes;
  }
  static std::string marker(int type, std::size_t count) {
    if (count < 15) return {static_cast<char>(type + static_cast<int>(count))};
    return static_cast<char>(type + 15) + ('\x12' + bigEndian(count, 4));
  }

  std::string bytes_ = "bplist00";
  std::vector<std::size_t> offsets_;
};

}  // namespace vembrix
