#include "platform/embedded/XmlPropertyListReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <utility>

#include "platform/NestingLimit.h"
#include "platform/Utf8.h"
#include "platform/XmlCharacters.h"
#include "platform/embedded/PropertyListText.h"

namespace vembrix {
namespace {

struct Tag {
  enum class Kind { Open, Close, Empty };

  std::string_view name;
  Kind kind = Kind::Open;
};

std::optional<PropertyList> scalar(std::string_view element, std::string content) {
  if (element == "string") return PropertyList(std::move(content));
  const std::string_view text = trimXmlSpace(content);
  if (element == "integer") return parseInteger(text);
  if (element == "real") return parsePropertyListReal(text);
  if (element == "date") return parseDate(text);
  if (element == "data") return parseData(text);
  if (element == "true" && text.empty()) return PropertyList(true);
  if (element == "false" && text.empty()) return PropertyList(false);
  return std::nullopt;
}

class XmlReader {
 public:
  explicit XmlReader(std::string_view bytes) : rest_(bytes) {}

  std::optional<PropertyList> read();

 private:
  // Each reads one thing from the front of the rest; nothing, or false, when it
  // is not well formed.
  std::optional<PropertyList> document();
  std::optional<PropertyList> value(const Tag& tag);
  std::optional<PropertyList> array();
  std::optional<PropertyList> dictionary();
  std::optional<Tag> nextTag();
  std::optional<Tag> tag();
  bool documentType();
  bool skipAttributes();

  /// The text of an element whose opening tag is read, up to and with its end.
  std::optional<std::string> text(const Tag& tag);
  bool appendMarkup(std::string& text);
  bool appendReference(std::string& text);
  bool appendCharacter(std::string& text);

  /// White space, comments and processing instructions.
  bool skipMiscellany();
  bool skipPast(std::string_view end);
  bool skip(std::string_view expected);

  std::string_view rest_;
  int depth_ = 0;
};

std::optional<PropertyList> XmlReader::read() {
  skip("\xEF\xBB\xBF");
  if (!skipMiscellany()) return std::nullopt;
  if (skip("<!DOCTYPE") && !(documentType() && skipMiscellany())) return std::nullopt;
  std::optional<PropertyList> result = document();
  return skipMiscellany() && rest_.empty() ? result : std::nullopt;
}

std::optional<PropertyList> XmlReader::document() {
  std::optional<Tag> first = nextTag();
  if (!first || first->name != "plist") return first ? value(*first) : std::nullopt;
  if (first->kind != Tag::Kind::Open) return std::nullopt;
  first = nextTag();
  std::optional<PropertyList> result = first ? value(*first) : std::nullopt;
  const std::optional<Tag> last = nextTag();
  const bool ended = last && last->kind == Tag::Kind::Close && last->name == "plist";
  return ended ? result : std::nullopt;
}

bool XmlReader::documentType() {
  while (!rest_.empty()) {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    if (c == '>') return true;
    if (c == '[') return false;
    if ((c == '"' || c == '\'') && !skipPast({&c, 1})) return false;
  }
  return false;
}

std::optional<PropertyList> XmlReader::value(const Tag& tag) {
  if (tag.kind == Tag::Kind::Close) return std::nullopt;
  const bool isArray = tag.name == "array";
  if (isArray || tag.name == "dict") {
    if (tag.kind == Tag::Kind::Empty) {
      return isArray ? PropertyList(PropertyList::Array())
                     : PropertyList(PropertyList::Dictionary());
    }
    if (depth_ == kNestingLimit) return std::nullopt;
    depth_ += 1;
    std::optional<PropertyList> container = isArray ? array() : dictionary();
    depth_ -= 1;
    return container;
  }
  std::optional<std::string> content = text(tag);
  return content ? scalar(tag.name, std::move(*content)) : std::nullopt;
}

std::optional<PropertyList> XmlReader::array() {
  PropertyList::Array elements;
  while (const std::optional<Tag> tag = nextTag()) {
    if (tag->kind == Tag::Kind::Close) {
      return tag->name == "array" ? std::optional(PropertyList(std::move(elements))) : std::nullopt;
    }
    std::optional<PropertyList> element = value(*tag);
    if (!element) return std::nullopt;
    elements.push_back(std::move(*element));
  }
  return std::nullopt;
}

std::optional<PropertyList> XmlReader::dictionary() {
  PropertyList::Dictionary entries;
  while (const std::optional<Tag> keyTag = nextTag()) {
    if (keyTag->kind == Tag::Kind::Close) {
      return keyTag->name == "dict" ? std::optional(PropertyList(std::move(entries)))
                                    : std::nullopt;
    }
    if (keyTag->name != "key") return std::nullopt;
    std::optional<std::string> key = text(*keyTag);
    const std::optional<Tag> valueTag = key ? nextTag() : std::nullopt;
    std::optional<PropertyList> content = valueTag ? value(*valueTag) : std::nullopt;
    if (!content) return std::nullopt;
    entries.insert_or_assign(std::move(*key), std::move(*content));
  }
  return std::nullopt;
}

std::optional<Tag> XmlReader::nextTag() {
  return skipMiscellany() ? tag() : std::nullopt;
}

std::optional<Tag> XmlReader::tag() {
  if (!skip("<")) return std::nullopt;
  Tag tag;
  if (skip("/")) tag.kind = Tag::Kind::Close;
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz";
  const std::size_t length = rest_.find_first_not_of(kLetters);
  if (length == 0 || length == std::string_view::npos) return std::nullopt;
  tag.name = rest_.substr(0, length);
  rest_.remove_prefix(length);
  if (!skipAttributes()) return std::nullopt;
  if (skip("/")) {
    if (tag.kind == Tag::Kind::Close) return std::nullopt;
    tag.kind = Tag::Kind::Empty;
  }
  return skip(">") ? std::optional(tag) : std::nullopt;
}

bool XmlReader::skipAttributes() {
  while (!rest_.empty()) {
    const char c = rest_.front();
    if (c == '>' || c == '/') return true;
    if (c == '<') return false;
    rest_.remove_prefix(1);
    if ((c == '"' || c == '\'') && !skipPast({&c, 1})) return false;
  }
  return false;
}

std::optional<std::string> XmlReader::text(const Tag& tag) {
  std::string text;
  if (tag.kind == Tag::Kind::Empty) return text;
  while (!rest_.starts_with("</")) {
    if (!appendMarkup(text)) return std::nullopt;
  }
  const std::optional<Tag> end = this->tag();
  return end && end->name == tag.name ? std::optional(std::move(text)) : std::nullopt;
}

bool XmlReader::appendMarkup(std::string& text) {
  if (skip("<!--")) return skipPast("-->");
  if (skip("<?")) return skipPast("?>");
  if (skip("<![CDATA[")) {
    while (!skip("]]>")) {
      if (!appendCharacter(text)) return false;
    }
    return true;
  }
  if (skip("&")) return appendReference(text);
  return !rest_.starts_with('<') && appendCharacter(text);
}

bool XmlReader::appendReference(std::string& text) {
  const std::size_t end = rest_.substr(0, 16).find(';');
  if (end == std::string_view::npos) return false;
  std::string_view name = rest_.substr(0, end);
  rest_.remove_prefix(end + 1);
  if (!name.starts_with('#')) {
    constexpr std::array<std::pair<std::string_view, char>, 5> kEntities = {
        {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
    for (const auto& [entity, character] : kEntities) {
      if (name != entity) continue;
      text += character;
      return true;
    }
    return false;
  }
  name.remove_prefix(1);
  const bool hexadecimal = name.starts_with('x');
  if (hexadecimal) name.remove_prefix(1);
  std::uint32_t value = 0;
  const char* last = name.data() + name.size();
  const auto result = std::from_chars(name.data(), last, value, hexadecimal ? 16 : 10);
  if (result.ec != std::errc() || result.ptr != last || !isXmlCharacter(value)) return false;
  appendUtf8(text, value);
  return true;
}

bool XmlReader::appendCharacter(std::string& text) {
  // Line ends become line feeds, as XML wants it.
  if (skip("\r\n") || skip("\r")) {
    text += '\n';
    return true;
  }
  const Utf8Character character = firstCharacter(rest_);
  if (!character.valid || !isXmlCharacter(character.value)) return false;
  text.append(rest_.substr(0, character.length));
  rest_.remove_prefix(character.length);
  return true;
}

bool XmlReader::skipMiscellany() {
  while (true) {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\n\r"), rest_.size()));
    if (skip("<?")) {
      if (!skipPast("?>")) return false;
    } else if (skip("<!--")) {
      if (!skipPast("-->")) return false;
    } else {
      return true;
    }
  }
}

bool XmlReader::skipPast(std::string_view end) {
  const std::size_t found = rest_.find(end);
  if (found == std::string_view::npos) return false;
  rest_.remove_prefix(found + end.size());
  return true;
}

bool XmlReader::skip(std::string_view expected) {
  if (!rest_.starts_with(expected)) return false;
  rest_.remove_prefix(expected.size());
  return true;
}

}  // namespace

std::optional<PropertyList> readXmlPropertyList(std::string_view bytes) {
  return XmlReader(bytes).read();
}

}  // namespace vembrix
