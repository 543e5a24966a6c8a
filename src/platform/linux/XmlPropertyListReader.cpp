#include "platform/linux/XmlPropertyListReader.h"

#include <QByteArray>
#include <QXmlStreamReader>
#include <chrono>
#include <cstdio>
#include <utility>

#include "platform/NestingLimit.h"

namespace vembrix {
namespace {

std::optional<PropertyList> parseInteger(const QByteArray& text) {
  const int base = text.contains('x') || text.contains('X') ? 16 : 10;
  bool valid = false;
  const qlonglong value = text.toLongLong(&valid, base);
  if (valid) return PropertyList(std::int64_t{value});
  const qulonglong large = text.toULongLong(&valid, base);
  if (!valid || text.startsWith('-')) return std::nullopt;
  return PropertyList(static_cast<double>(large));
}

std::optional<PropertyList> parseReal(const QByteArray& text) {
  bool valid = false;
  const double value = text.toLower().replace("infinity", "inf").toDouble(&valid);
  return valid ? std::optional(PropertyList(value)) : std::nullopt;
}

std::optional<PropertyList> parseDate(const QByteArray& text) {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
  char zone = 0;
  char excess = 0;
  // Years before 1000 may lack their zeros: libplist writes them so.
  const int count = std::sscanf(text.constData(), "%4d-%2u-%2uT%2u:%2u:%2u%c%c", &year, &month,
                                &day, &hour, &minute, &second, &zone, &excess);
  const std::chrono::year_month_day calendar{std::chrono::year(year), std::chrono::month(month),
                                             std::chrono::day(day)};
  if (count != 7 || zone != 'Z' || !calendar.ok()) return std::nullopt;
  // A leap second is the first one of the next minute.
  if (hour > 23 || minute > 59 || second > 60) return std::nullopt;
  constexpr auto kReferenceDate = std::chrono::sys_days(std::chrono::January / 1 / 2001);
  const auto time = std::chrono::sys_days(calendar) + std::chrono::hours(hour) +
                    std::chrono::minutes(minute) + std::chrono::seconds(second) - kReferenceDate;
  return PropertyList(PropertyList::Date{std::chrono::duration<double>(time).count()});
}

std::optional<PropertyList> parseData(QByteArray text) {
  text.removeIf([](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
  const auto data = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
  if (!data) return std::nullopt;
  return PropertyList(PropertyList::Data((*data).begin(), (*data).end()));
}

std::optional<PropertyList> scalar(QStringView element, const QString& content) {
  if (element == u"string") return PropertyList(content.toStdString());
  const QByteArray text = content.toUtf8().trimmed();
  if (element == u"integer") return parseInteger(text);
  if (element == u"real") return parseReal(text);
  if (element == u"date") return parseDate(text);
  if (element == u"data") return parseData(text);
  if (element == u"true" && text.isEmpty()) return PropertyList(true);
  if (element == u"false" && text.isEmpty()) return PropertyList(false);
  return std::nullopt;
}

class XmlPropertyListReader {
 public:
  explicit XmlPropertyListReader(QXmlStreamReader& xml) : xml_(xml) {}

  std::optional<PropertyList> read();

 private:
  using Token = QXmlStreamReader::TokenType;

  // Each of these ends with the end tag of the element that is open.
  std::optional<PropertyList> value();
  std::optional<PropertyList> array();
  std::optional<PropertyList> dictionary();
  std::optional<QString> text();

  /// The next tag; Invalid where text stands in its place.
  Token nextTag();

  QXmlStreamReader& xml_;
  int depth_ = 0;
};

std::optional<PropertyList> XmlPropertyListReader::read() {
  if (nextTag() != Token::StartElement) return std::nullopt;
  const bool wrapped = xml_.name() == u"plist";
  if (wrapped && nextTag() != Token::StartElement) return std::nullopt;
  std::optional<PropertyList> result = value();
  if (!result || (wrapped && nextTag() != Token::EndElement)) return std::nullopt;
  return nextTag() == Token::EndDocument ? result : std::nullopt;
}

std::optional<PropertyList> XmlPropertyListReader::value() {
  const bool isArray = xml_.name() == u"array";
  if (!isArray && xml_.name() != u"dict") {
    const QString element = xml_.name().toString();
    const std::optional<QString> content = text();
    return content ? scalar(element, *content) : std::nullopt;
  }
  if (depth_ == kNestingLimit) return std::nullopt;
  depth_ += 1;
  std::optional<PropertyList> container = isArray ? array() : dictionary();
  depth_ -= 1;
  return container;
}

std::optional<PropertyList> XmlPropertyListReader::array() {
  PropertyList::Array elements;
  Token tag = nextTag();
  for (; tag == Token::StartElement; tag = nextTag()) {
    std::optional<PropertyList> element = value();
    if (!element) return std::nullopt;
    elements.push_back(std::move(*element));
  }
  return tag == Token::EndElement ? std::optional(PropertyList(std::move(elements))) : std::nullopt;
}

std::optional<PropertyList> XmlPropertyListReader::dictionary() {
  PropertyList::Dictionary entries;
  Token tag = nextTag();
  for (; tag == Token::StartElement; tag = nextTag()) {
    const std::optional<QString> key = xml_.name() == u"key" ? text() : std::nullopt;
    if (!key || nextTag() != Token::StartElement) return std::nullopt;
    std::optional<PropertyList> content = value();
    if (!content) return std::nullopt;
    entries.insert_or_assign(key->toStdString(), std::move(*content));
  }
  return tag == Token::EndElement ? std::optional(PropertyList(std::move(entries))) : std::nullopt;
}

std::optional<QString> XmlPropertyListReader::text() {
  QString text;
  while (true) {
    switch (xml_.readNext()) {
      case Token::Characters:
        text += xml_.text();
        break;
      case Token::Comment:
      case Token::ProcessingInstruction:
        break;
      case Token::EndElement:
        return text;
      default:
        return std::nullopt;
    }
  }
}

XmlPropertyListReader::Token XmlPropertyListReader::nextTag() {
  while (true) {
    const Token token = xml_.readNext();
    switch (token) {
      case Token::StartElement:
      case Token::EndElement:
      case Token::EndDocument:
        return token;
      case Token::Characters:
        if (!xml_.isWhitespace()) return Token::Invalid;
        break;
      case Token::Invalid:
      case Token::EntityReference:
        return Token::Invalid;
      default:
        break;
    }
  }
}

}  // namespace

std::optional<PropertyList> readXmlPropertyList(QXmlStreamReader& xml) {
  return XmlPropertyListReader(xml).read();
}

}  // namespace vembrix
