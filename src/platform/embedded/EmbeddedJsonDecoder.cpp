// JSON in standard C++: the decoder. RFC 8259 to the letter, from one byte to
// the next.

#include <algorithm>
#include <charconv>

#include "platform/Json.h"
#include "platform/NestingLimit.h"
#include "platform/Utf8.h"
#include "platform/embedded/RealText.h"

namespace vembrix {
namespace {

class JsonDecoder {
 public:
  explicit JsonDecoder(std::string_view text) : rest_(text) {}

  std::optional<PropertyList> decode();

 private:
  // Each reads one thing from the front of the rest; nothing when it is not
  // well formed.
  std::optional<PropertyList> value();
  std::optional<PropertyList> array();
  std::optional<PropertyList> object();
  std::optional<PropertyList> number();
  std::optional<PropertyList> literal(std::string_view word, PropertyList meaning);
  std::optional<std::string> string();
  bool member(PropertyList::Dictionary& dictionary);
  bool escape(std::string& out);
  bool unicodeEscape(std::string& out);
  std::optional<char32_t> fourHexDigits();

  void skipWhitespace();
  bool skip(char expected);
  std::size_t skipDigits();
  char front() const { return rest_.empty() ? '\0' : rest_.front(); }

  std::string_view rest_;
  int depth_ = 0;
};

std::optional<PropertyList> JsonDecoder::decode() {
  skipWhitespace();
  if (front() != '[' && front() != '{') return std::nullopt;
  std::optional<PropertyList> result = value();
  skipWhitespace();
  return rest_.empty() ? result : std::nullopt;
}

std::optional<PropertyList> JsonDecoder::value() {
  switch (front()) {
    case '[':
      return array();
    case '{':
      return object();
    case '"':
      if (std::optional<std::string> text = string()) return PropertyList(std::move(*text));
      return std::nullopt;
    case 't':
      return literal("true", true);
    case 'f':
      return literal("false", false);
    case 'n':
      return literal("null", {});
    default:
      return number();
  }
}

std::optional<PropertyList> JsonDecoder::literal(std::string_view word, PropertyList meaning) {
  if (!rest_.starts_with(word)) return std::nullopt;
  rest_.remove_prefix(word.size());
  return meaning;
}

std::optional<PropertyList> JsonDecoder::array() {
  rest_.remove_prefix(1);
  if (depth_ == kNestingLimit) return std::nullopt;
  depth_ += 1;
  PropertyList::Array elements;
  skipWhitespace();
  if (!skip(']')) {
    do {
      skipWhitespace();
      std::optional<PropertyList> element = value();
      if (!element) return std::nullopt;
      elements.push_back(std::move(*element));
      skipWhitespace();
    } while (skip(','));
    if (!skip(']')) return std::nullopt;
  }
  depth_ -= 1;
  return PropertyList(std::move(elements));
}

std::optional<PropertyList> JsonDecoder::object() {
  rest_.remove_prefix(1);
  if (depth_ == kNestingLimit) return std::nullopt;
  depth_ += 1;
  PropertyList::Dictionary members;
  skipWhitespace();
  if (!skip('}')) {
    do {
      if (!member(members)) return std::nullopt;
    } while (skip(','));
    if (!skip('}')) return std::nullopt;
  }
  depth_ -= 1;
  return PropertyList(std::move(members));
}

bool JsonDecoder::member(PropertyList::Dictionary& dictionary) {
  skipWhitespace();
  if (front() != '"') return false;
  std::optional<std::string> name = string();
  skipWhitespace();
  if (!name || !skip(':')) return false;
  skipWhitespace();
  std::optional<PropertyList> content = value();
  if (!content) return false;
  dictionary.insert_or_assign(std::move(*name), std::move(*content));
  skipWhitespace();
  return true;
}

std::optional<PropertyList> JsonDecoder::number() {
  const std::string_view start = rest_;
  skip('-');
  if (!skip('0') && skipDigits() == 0) return std::nullopt;
  bool whole = true;
  if (skip('.')) {
    whole = false;
    if (skipDigits() == 0) return std::nullopt;
  }
  if (skip('e') || skip('E')) {
    whole = false;
    if (!skip('-')) skip('+');
    if (skipDigits() == 0) return std::nullopt;
  }
  const std::string_view text = start.substr(0, start.size() - rest_.size());
  std::int64_t integer = 0;
  if (whole && std::from_chars(text.data(), text.data() + text.size(), integer).ec == std::errc()) {
    return PropertyList(integer);
  }
  if (const std::optional<double> real = parseReal(text)) return PropertyList(*real);
  return std::nullopt;
}

std::optional<std::string> JsonDecoder::string() {
  rest_.remove_prefix(1);
  std::string text;
  while (!skip('"')) {
    if (skip('\\')) {
      if (!escape(text)) return std::nullopt;
      continue;
    }
    const Utf8Character character = firstCharacter(rest_);
    if (!character.valid || character.value < 0x20) return std::nullopt;
    text.append(rest_.substr(0, character.length));
    rest_.remove_prefix(character.length);
  }
  return text;
}

bool JsonDecoder::escape(std::string& out) {
  constexpr std::string_view kNames = "\"\\/bfnrt";
  constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
  if (skip('u')) return unicodeEscape(out);
  if (rest_.empty()) return false;
  const std::size_t index = kNames.find(rest_.front());
  if (index == std::string_view::npos) return false;
  rest_.remove_prefix(1);
  out += kMeanings[index];
  return true;
}

bool JsonDecoder::unicodeEscape(std::string& out) {
  std::optional<char32_t> character = fourHexDigits();
  if (!character) return false;
  const bool isHighSurrogate = *character >= 0xD800 && *character <= 0xDBFF;
  const bool isLowSurrogate = *character >= 0xDC00 && *character <= 0xDFFF;
  // Half a pair is no character, and has no UTF-8 form.
  if (isLowSurrogate) return false;
  if (isHighSurrogate) {
    if (!skip('\\') || !skip('u')) return false;
    const std::optional<char32_t> low = fourHexDigits();
    if (!low || *low < 0xDC00 || *low > 0xDFFF) return false;
    character = 0x10000 + ((*character - 0xD800) << 10) + (*low - 0xDC00);
  }
  appendUtf8(out, *character);
  return true;
}

std::optional<char32_t> JsonDecoder::fourHexDigits() {
  const std::string_view digits = rest_.substr(0, 4);
  std::uint16_t value = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (error != std::errc() || end != digits.data() + 4) return std::nullopt;
  rest_.remove_prefix(4);
  return value;
}

void JsonDecoder::skipWhitespace() {
  rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\n\r"), rest_.size()));
}

bool JsonDecoder::skip(char expected) {
  if (!rest_.starts_with(expected)) return false;
  rest_.remove_prefix(1);
  return true;
}

std::size_t JsonDecoder::skipDigits() {
  const std::size_t count = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
  rest_.remove_prefix(count);
  return count;
}

}  // namespace

std::optional<PropertyList> decodeJson(std::string_view text) {
  return JsonDecoder(text).decode();
}

}  // namespace vembrix
