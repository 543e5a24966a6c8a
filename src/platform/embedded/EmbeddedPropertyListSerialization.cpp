// Property lists in standard C++: the writer, and the choice of the reader.

#include <utility>

#include "platform/NestingLimit.h"
#include "platform/PropertyListSerialization.h"
#include "platform/Utf8.h"
#include "platform/XmlCharacters.h"
#include "platform/embedded/BinaryPropertyListReader.h"
#include "platform/embedded/PropertyListText.h"
#include "platform/embedded/XmlPropertyListReader.h"

namespace vembrix {
namespace {

constexpr std::string_view kHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
constexpr std::string_view kFooter = "</plist>\n";

class XmlWriter {
 public:
  /// Whether the value has a property-list form.
  bool append(const PropertyList& value);
  std::string take() { return std::move(xml_); }
  void appendRaw(std::string_view text) { xml_ += text; }

 private:
  bool appendArray(const PropertyList::Array& array);
  bool appendDictionary(const PropertyList::Dictionary& dictionary);
  bool appendDate(PropertyList::Date date);
  void appendElement(std::string_view name, std::string_view content);
  void appendText(std::string_view text);
  void indent() { xml_.append(static_cast<std::size_t>(depth_), '\t'); }

  std::string xml_;
  int depth_ = 0;
};

bool XmlWriter::append(const PropertyList& value) {
  if (const PropertyList::Array* array = value.asArray()) return appendArray(*array);
  if (const PropertyList::Dictionary* dictionary = value.asDictionary()) {
    return appendDictionary(*dictionary);
  }
  if (const PropertyList::Date* date = value.asDate()) return appendDate(*date);
  if (const bool* boolean = value.asBool()) {
    indent();
    xml_ += *boolean ? "<true/>\n" : "<false/>\n";
  } else if (const std::int64_t* integer = value.asInteger()) {
    appendElement("integer", std::to_string(*integer));
  } else if (const double* real = value.asReal()) {
    appendElement("real", propertyListRealText(*real));
  } else if (const std::string* string = value.asString()) {
    appendElement("string", *string);
  } else if (const PropertyList::Data* data = value.asData()) {
    appendElement("data", dataText(*data));
  } else {
    return false;
  }
  return true;
}

bool XmlWriter::appendArray(const PropertyList::Array& array) {
  if (depth_ == kNestingLimit) return false;
  indent();
  xml_ += "<array>\n";
  depth_ += 1;
  for (const PropertyList& element : array) {
    if (!append(element)) return false;
  }
  depth_ -= 1;
  indent();
  xml_ += "</array>\n";
  return true;
}

bool XmlWriter::appendDictionary(const PropertyList::Dictionary& dictionary) {
  if (depth_ == kNestingLimit) return false;
  indent();
  xml_ += "<dict>\n";
  depth_ += 1;
  for (const auto& [key, value] : dictionary) {
    appendElement("key", key);
    if (!append(value)) return false;
  }
  depth_ -= 1;
  indent();
  xml_ += "</dict>\n";
  return true;
}

bool XmlWriter::appendDate(PropertyList::Date date) {
  const std::optional<std::string> text = dateText(date);
  if (text) appendElement("date", *text);
  return text.has_value();
}

void XmlWriter::appendElement(std::string_view name, std::string_view content) {
  indent();
  xml_.append("<").append(name).append(">");
  appendText(content);
  xml_.append("</").append(name).append(">\n");
}

void XmlWriter::appendText(std::string_view text) {
  while (!text.empty()) {
    const Utf8Character character = firstCharacter(text);
    text.remove_prefix(character.length);
    if (!character.valid || !isXmlCharacter(character.value)) {
      appendUtf8(xml_, U'\uFFFD');
    } else if (character.value == U'<') {
      xml_ += "&lt;";
    } else if (character.value == U'>') {
      xml_ += "&gt;";
    } else if (character.value == U'&') {
      xml_ += "&amp;";
    } else if (character.value == U'\r') {
      // As itself it would read back as a line feed.
      xml_ += "&#13;";
    } else {
      appendUtf8(xml_, character.value);
    }
  }
}

}  // namespace

std::optional<std::string> xmlPropertyList(const PropertyList& value) {
  XmlWriter writer;
  writer.appendRaw(kHeader);
  if (!writer.append(value)) return std::nullopt;
  writer.appendRaw(kFooter);
  return writer.take();
}

std::optional<PropertyList> parsePropertyList(std::string_view bytes) {
  if (bytes.starts_with(kBinaryPropertyListMagic)) return readBinaryPropertyList(bytes);
  return readXmlPropertyList(bytes);
}

}  // namespace vembrix
