#include "platform/linux/defaults/XmlPropertyList.h"

#include <QByteArray>
#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QStringDecoder>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/portable/NestingLimit.h"
#include "platform/portable/Utf8.h"

namespace vembrix {
namespace {

QString fromUtf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QDateTime referenceDate() {
  return {QDate(2001, 1, 1), QTime(0, 0), Qt::UTC};
}

// Reading

/// Returns whether the text is safe for the parser, which expands the declarations of a document
/// type and compares each attribute of a tag to all others.
bool isHarmless(std::string_view text) {
  constexpr std::size_t kLongestTag = 1024;
  constexpr std::pair<std::string_view, std::string_view> kOpaque[] = {
      {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
  std::size_t at = text.find('<');
  while (at != std::string_view::npos) {
    const std::string_view rest = text.substr(at);
    const auto* opaque =
        std::ranges::find_if(kOpaque, [&](auto pair) { return rest.starts_with(pair.first); });
    if (opaque != std::end(kOpaque)) {
      at = text.find(opaque->second, at + opaque->first.size());
    } else {
      const std::size_t start = at;
      at = text.find_first_of("<>[\"'", at + 1);
      while (at != std::string_view::npos && (text[at] == '"' || text[at] == '\'')) {
        at = text.find(text[at], at + 1);
        if (at != std::string_view::npos) at = text.find_first_of("<>[\"'", at + 1);
      }
      const std::size_t end = std::min(at, text.size());
      // A document type with declarations has brackets.
      if (end - start > kLongestTag || (end < text.size() && text[end] == '[')) return false;
    }
    if (at != std::string_view::npos) at = text.find('<', at + (text[at] == '<' ? 0 : 1));
  }
  return true;
}

PropertyList integerFrom(const QByteArray& text) {
  const int base = text.contains('x') || text.contains('X') ? 16 : 10;
  bool isValid = false;
  const qlonglong value = text.toLongLong(&isValid, base);
  if (isValid) return std::int64_t{value};
  const qulonglong large = text.toULongLong(&isValid, base);
  return isValid && !text.startsWith('-') ? PropertyList(static_cast<double>(large))
                                          : PropertyList();
}

PropertyList realFrom(QByteArray text) {
  text = text.toLower().replace("infinity", "inf");
  if (text.startsWith('+')) text.remove(0, 1);
  bool isValid = false;
  const double value = text.toDouble(&isValid);
  return isValid ? PropertyList(value) : PropertyList();
}

PropertyList dateFrom(const QByteArray& text) {
  const QDateTime date = QDateTime::fromString(QString::fromLatin1(text), Qt::ISODateWithMs);
  if (!date.isValid() || !text.endsWith('Z')) return {};
  return PropertyList::Date{static_cast<double>(referenceDate().msecsTo(date)) / 1000};
}

PropertyList dataFrom(QByteArray text) {
  text.removeIf([](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
  const auto data = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
  return data ? PropertyList(PropertyList::Data((*data).begin(), (*data).end())) : PropertyList();
}

PropertyList scalarFrom(QStringView element, const QString& content) {
  if (element == u"string") return content.toStdString();
  const QByteArray text = content.toUtf8().trimmed();
  if (element == u"integer") return integerFrom(text);
  if (element == u"real") return realFrom(text);
  if (element == u"date") return dateFrom(text);
  if (element == u"data") return dataFrom(text);
  if (element == u"true" && text.isEmpty()) return true;
  if (element == u"false" && text.isEmpty()) return false;
  return {};
}

/// A key, its value, and the part of the text that holds both.
struct Entry {
  std::string key;
  PropertyList value;
  qsizetype start = 0;
  qsizetype end = 0;
};

/// The top dictionary, if there is one, and its place in the text.
struct Outline {
  std::vector<Entry> entries;
  /// The whole element.
  qsizetype start = 0;
  qsizetype end = 0;
  /// The part between its tags; if there is only one tag, both are `end`.
  qsizetype contentStart = 0;
  qsizetype contentEnd = 0;
};

class Reader {
 public:
  explicit Reader(const QString& text) : text_(text), xml_(text) {}

  /// Empty if the text is malformed. `outline` is filled for a dictionary.
  std::optional<PropertyList> read(Outline* outline = nullptr);

 private:
  using Token = QXmlStreamReader::TokenType;

  // Reads the open element, up to its end tag.
  PropertyList value();
  PropertyList array();
  PropertyList dictionary();
  std::vector<Entry> entries();
  /// Empty if the element holds more than text.
  std::optional<QString> content();

  qsizetype offset() const { return static_cast<qsizetype>(xml_.characterOffset()); }
  /// Returns the start of the current tag: a tag contains no other such character.
  qsizetype tagStart() const { return text_.lastIndexOf(u'<', offset() - 1); }

  const QString& text_;
  QXmlStreamReader xml_;
  int depth_ = 0;
};

std::optional<PropertyList> Reader::read(Outline* outline) {
  if (xml_.readNextStartElement() && xml_.name() == u"plist") xml_.readNextStartElement();
  PropertyList result;
  if (outline && xml_.name() == u"dict") {
    outline->start = tagStart();
    outline->contentStart = offset();
    outline->entries = entries();
    outline->end = offset();
    const bool isOneTag = outline->end == outline->contentStart;
    outline->contentEnd = isOneTag ? outline->end : tagStart();
  } else if (xml_.isStartElement()) {
    result = value();
  }
  while (!xml_.atEnd()) xml_.readNext();
  return xml_.hasError() ? std::nullopt : std::optional(std::move(result));
}

PropertyList Reader::value() {
  const bool isArray = xml_.name() == u"array";
  if (!isArray && xml_.name() != u"dict") {
    const QString element = xml_.name().toString();
    const std::optional<QString> text = content();
    return text ? scalarFrom(element, *text) : PropertyList();
  }
  if (depth_ == kNestingLimit) {
    xml_.skipCurrentElement();
    return {};
  }
  depth_ += 1;
  PropertyList container = isArray ? array() : dictionary();
  depth_ -= 1;
  return container;
}

PropertyList Reader::array() {
  PropertyList::Array elements;
  while (xml_.readNextStartElement()) elements.push_back(value());
  return elements;
}

PropertyList Reader::dictionary() {
  PropertyList::Dictionary dictionary;
  for (Entry& entry : entries()) {
    if (entry.value.isNull()) continue;
    dictionary.insert_or_assign(std::move(entry.key), std::move(entry.value));
  }
  return dictionary;
}

std::vector<Entry> Reader::entries() {
  std::vector<Entry> entries;
  std::optional<QString> key;
  qsizetype start = 0;
  while (xml_.readNextStartElement()) {
    if (xml_.name() == u"key") {
      start = tagStart();
      key = content();
      continue;
    }
    PropertyList found = value();
    if (key) entries.push_back({key->toStdString(), std::move(found), start, offset()});
    key.reset();
  }
  return entries;
}

std::optional<QString> Reader::content() {
  std::optional<QString> text = QString();
  for (Token token = xml_.readNext(); token != Token::EndElement; token = xml_.readNext()) {
    if (xml_.hasError()) return std::nullopt;
    if (token == Token::Characters && text) *text += xml_.text();
    if (token == Token::StartElement) {
      text.reset();
      xml_.skipCurrentElement();
    }
  }
  return text;
}

// Writing

/// Formats the date to the millisecond; empty for dates outside of the years 0 to 9999.
QString dateText(PropertyList::Date date) {
  constexpr double kFarthest = 1e12;
  if (!(std::abs(date.seconds) < kFarthest)) return {};
  const auto milliseconds = static_cast<qint64>(std::floor(date.seconds * 1000));
  return referenceDate()
      .addMSecs(milliseconds)
      .toString(milliseconds % 1000 == 0 ? Qt::ISODate : Qt::ISODateWithMs);
}

QString realText(double value) {
  if (std::isnan(value)) return QStringLiteral("nan");
  if (std::isinf(value))
    return value > 0 ? QStringLiteral("+infinity") : QStringLiteral("-infinity");
  return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

/// Returns the text with the characters that XML can hold.
QString xmlText(std::string_view utf8) {
  using Flag = QStringConverter::Flag;
  // A byte order mark is treated like any other character.
  QStringDecoder decode(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
  QString text = decode(QByteArrayView(utf8.data(), static_cast<qsizetype>(utf8.size())));
  for (QChar& unit : text) {
    const bool isControl = unit < u' ' && unit != u'\t' && unit != u'\n' && unit != u'\r';
    if (isControl || unit >= u'\uFFFE') unit = QChar::ReplacementCharacter;
  }
  return text;
}

/// Writes a list with one value, or a dictionary, entry by entry.
class Writer {
 public:
  Writer() {
    xml_.setAutoFormatting(true);
    xml_.setAutoFormattingIndent(-1);
    xml_.writeStartDocument();
    xml_.writeDTD(
        QStringLiteral("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                       "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"));
    xml_.writeStartElement(QStringLiteral("plist"));
    xml_.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
  }

  // Returns whether the value can be written.
  bool append(const PropertyList& value);
  bool appendEntry(std::string_view key, const PropertyList& value) {
    appendText(QStringLiteral("key"), key);
    return append(value);
  }
  void beginDictionary() {
    depth_ += 1;
    xml_.writeStartElement(QStringLiteral("dict"));
  }

  const QByteArray& bytes() const { return bytes_; }
  std::string end() {
    xml_.writeEndDocument();
    return bytes_.toStdString();
  }

 private:
  template <typename Elements>
  bool appendContainer(const QString& element, const Elements& elements);
  bool appendScalar(const QString& element, const QString& text) {
    xml_.writeTextElement(element, text);
    return true;
  }
  bool appendText(const QString& element, std::string_view text);

  QByteArray bytes_;
  QXmlStreamWriter xml_{&bytes_};
  int depth_ = 0;
};

bool Writer::append(const PropertyList& value) {
  if (const bool* boolean = value.asBool()) {
    xml_.writeEmptyElement(*boolean ? QStringLiteral("true") : QStringLiteral("false"));
    return true;
  }
  if (const std::int64_t* integer = value.asInteger()) {
    return appendScalar(QStringLiteral("integer"), QString::number(*integer));
  }
  if (const double* real = value.asReal()) {
    return appendScalar(QStringLiteral("real"), realText(*real));
  }
  if (const std::string* string = value.asString()) {
    return appendText(QStringLiteral("string"), *string);
  }
  if (const PropertyList::Date* date = value.asDate()) {
    const QString text = dateText(*date);
    return !text.isEmpty() && appendScalar(QStringLiteral("date"), text);
  }
  if (const PropertyList::Data* data = value.asData()) {
    const QByteArrayView bytes(data->data(), static_cast<qsizetype>(data->size()));
    return appendScalar(QStringLiteral("data"),
                        QString::fromLatin1(bytes.toByteArray().toBase64()));
  }
  if (const PropertyList::Array* array = value.asArray()) {
    return appendContainer(QStringLiteral("array"), *array);
  }
  const PropertyList::Dictionary* dictionary = value.asDictionary();
  return dictionary && appendContainer(QStringLiteral("dict"), *dictionary);
}

template <typename Elements>
bool Writer::appendContainer(const QString& element, const Elements& elements) {
  if (depth_ == kNestingLimit) return false;
  depth_ += 1;
  xml_.writeStartElement(element);
  for (const auto& entry : elements) {
    if constexpr (std::is_same_v<Elements, PropertyList::Array>) {
      if (!append(entry)) return false;
    } else {
      if (!appendEntry(entry.first, entry.second)) return false;
    }
  }
  xml_.writeEndElement();
  depth_ -= 1;
  return true;
}

bool Writer::appendText(const QString& element, std::string_view text) {
  xml_.writeStartElement(element);
  // Escaped, because a carriage return would be read back as a line feed.
  const QStringList lines = xmlText(text).split(u'\r');
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (i > 0) xml_.writeEntityReference(QStringLiteral("#13"));
    xml_.writeCharacters(lines[i]);
  }
  xml_.writeEndElement();
  return true;
}

/// Returns the text of one entry of a dictionary, on lines of its own.
std::optional<QString> entryText(std::string_view key, const PropertyList& value) {
  Writer writer;
  writer.beginDictionary();
  // The writer completes a tag only when something follows.
  const qsizetype start = writer.bytes().size() + 1;
  if (!writer.appendEntry(key, value)) return std::nullopt;
  QString text = QString::fromUtf8(writer.bytes().mid(start));
  // The same applies to an empty element at the end.
  if (!text.endsWith(u'>')) text += QStringLiteral("/>");
  return text;
}

/// Returns the start of the white space before `end`.
qsizetype withoutSpaceBefore(QStringView text, qsizetype end) {
  while (end > 0 && text[end - 1].isSpace()) end -= 1;
  return end;
}

void appendTo(QString& text, const Outline& outline, const QString& entry) {
  if (outline.contentEnd == outline.end) {
    text.replace(outline.start, outline.end - outline.start,
                 QStringLiteral("<dict>%1\n\t</dict>").arg(entry));
  } else {
    text.insert(withoutSpaceBefore(text, outline.contentEnd), entry);
  }
}

}  // namespace

std::variant<PropertyList, PropertyListFault> readPropertyList(std::string_view bytes) {
  if (bytes.starts_with("bplist")) return PropertyListFault::Binary;
  if (bytes.size() > kPropertyListLimit || !isUtf8(bytes) || !isHarmless(bytes)) {
    return PropertyListFault::Malformed;
  }
  std::optional<PropertyList> value = Reader(fromUtf8(bytes)).read();
  if (!value) return PropertyListFault::Malformed;
  return *std::move(value);
}

std::optional<std::string> writePropertyList(const PropertyList& value) {
  Writer writer;
  return writer.append(value) ? std::optional(writer.end()) : std::nullopt;
}

std::optional<std::string> changedPropertyList(std::string_view bytes, std::string_view key,
                                               const PropertyList& value) {
  if (bytes.size() > kPropertyListLimit || !isUtf8(bytes) || !isHarmless(bytes))
    return std::nullopt;
  QString text = fromUtf8(bytes);
  Outline outline;
  if (!Reader(text).read(&outline) || outline.end == 0) return std::nullopt;
  std::optional<QString> entry = value.isNull() ? QString() : entryText(key, value);
  if (!entry) return std::nullopt;
  const bool isNew = std::ranges::find(outline.entries, key, &Entry::key) == outline.entries.end();
  if (isNew && !value.isNull()) appendTo(text, outline, *entry);
  // From the last to the first, so that the positions of the others stay valid. If a key occurs
  // several times, its last value counts.
  for (auto old = outline.entries.rbegin(); old != outline.entries.rend(); ++old) {
    if (old->key != key) continue;
    const qsizetype start = withoutSpaceBefore(text, old->start);
    text.replace(start, old->end - start, std::exchange(*entry, QString()));
  }
  // Qt removes it.
  const std::string_view mark = "\xEF\xBB\xBF";
  return (bytes.starts_with(mark) ? std::string(mark) : std::string()) + text.toStdString();
}

}  // namespace vembrix
