// JSON in standard C++: the encoder. The decoder is EmbeddedJsonDecoder.cpp.

#include <cmath>

#include "platform/Json.h"
#include "platform/NestingLimit.h"
#include "platform/Utf8.h"
#include "platform/embedded/RealText.h"

namespace vembrix {
namespace {

class JsonEncoder {
 public:
  /// Whether JSON can hold the value.
  bool append(const PropertyList& value);
  std::string take() { return std::move(text_); }

 private:
  void appendString(std::string_view string);
  void appendCharacter(char32_t character);
  bool appendReal(double value);
  bool appendArray(const PropertyList::Array& array);
  bool appendDictionary(const PropertyList::Dictionary& dictionary);

  std::string text_;
  int depth_ = 0;
};

bool JsonEncoder::append(const PropertyList& value) {
  if (value.isNull()) {
    text_ += "null";
  } else if (const bool* boolean = value.asBool()) {
    text_ += *boolean ? "true" : "false";
  } else if (const std::int64_t* integer = value.asInteger()) {
    text_ += std::to_string(*integer);
  } else if (const double* real = value.asReal()) {
    return appendReal(*real);
  } else if (const std::string* string = value.asString()) {
    appendString(*string);
  } else if (const PropertyList::Array* array = value.asArray()) {
    return appendArray(*array);
  } else if (const PropertyList::Dictionary* dictionary = value.asDictionary()) {
    return appendDictionary(*dictionary);
  } else {
    return false;
  }
  return true;
}

bool JsonEncoder::appendReal(double value) {
  if (!std::isfinite(value)) return false;
  text_ += realText(value);
  return true;
}

bool JsonEncoder::appendArray(const PropertyList::Array& array) {
  if (depth_ == kNestingLimit) return false;
  depth_ += 1;
  text_ += '[';
  const char* separator = "";
  for (const PropertyList& element : array) {
    text_ += separator;
    if (!append(element)) return false;
    separator = ",";
  }
  text_ += ']';
  depth_ -= 1;
  return true;
}

bool JsonEncoder::appendDictionary(const PropertyList::Dictionary& dictionary) {
  if (depth_ == kNestingLimit) return false;
  depth_ += 1;
  text_ += '{';
  const char* separator = "";
  for (const auto& [key, value] : dictionary) {
    text_ += separator;
    appendString(key);
    text_ += ':';
    if (!append(value)) return false;
    separator = ",";
  }
  text_ += '}';
  depth_ -= 1;
  return true;
}

void JsonEncoder::appendString(std::string_view string) {
  text_ += '"';
  while (!string.empty()) {
    const Utf8Character character = firstCharacter(string);
    appendCharacter(character.valid ? character.value : U'\uFFFD');
    string.remove_prefix(character.length);
  }
  text_ += '"';
}

void JsonEncoder::appendCharacter(char32_t character) {
  constexpr char kHexDigits[] = "0123456789abcdef";
  if (character == U'"' || character == U'\\') {
    text_ += '\\';
    text_ += static_cast<char>(character);
  } else if (character < 0x20) {
    text_ += "\\u00";
    text_ += kHexDigits[character >> 4];
    text_ += kHexDigits[character & 0xF];
  } else {
    appendUtf8(text_, character);
  }
}

}  // namespace

std::optional<std::string> encodeJson(const PropertyList& value) {
  if (!value.asArray() && !value.asDictionary()) return std::nullopt;
  JsonEncoder encoder;
  if (!encoder.append(value)) return std::nullopt;
  return encoder.take();
}

}  // namespace vembrix
