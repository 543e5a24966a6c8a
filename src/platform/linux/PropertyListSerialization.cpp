// The XML form is Qt's job: libplist would read numbers in the locale of the
// process, take text that is no number for 0, and follow nesting without end.
// libplist reads the binary form.

#include "platform/PropertyListSerialization.h"

#include <QByteArray>
#include <QLocale>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <chrono>
#include <cmath>

#include "platform/NestingLimit.h"
#include "platform/linux/BinaryPropertyList.h"
#include "platform/linux/XmlPropertyListReader.h"
#include "platform/linux/XmlText.h"

namespace vembrix {
namespace {

using std::chrono::sys_days;
using std::chrono::sys_seconds;

constexpr sys_seconds kReferenceDate = sys_days(std::chrono::January / 1 / 2001);

/// To the second before; nothing beyond the years 0 to 9999. Qt has no year 0,
/// in which the earliest date of other systems lies.
QString dateText(PropertyList::Date date) {
  constexpr double kMaximum = 1e12;
  if (!(std::abs(date.seconds) < kMaximum)) return {};
  const sys_seconds time =
      kReferenceDate + std::chrono::seconds(static_cast<std::int64_t>(std::floor(date.seconds)));
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day calendar(day);
  const std::chrono::hh_mm_ss clock(time - day);
  const int year = static_cast<int>(calendar.year());
  if (year < 0 || year > 9999) return {};
  return QString::asprintf(
      "%04d-%02u-%02uT%02d:%02d:%02dZ", year, static_cast<unsigned>(calendar.month()),
      static_cast<unsigned>(calendar.day()), static_cast<int>(clock.hours().count()),
      static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
}

QString realText(double value) {
  if (std::isnan(value)) return QStringLiteral("nan");
  if (std::isinf(value))
    return value > 0 ? QStringLiteral("+infinity") : QStringLiteral("-infinity");
  return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

class XmlPropertyListWriter {
 public:
  /// Nothing when the value has no property-list form.
  std::optional<std::string> write(const PropertyList& value);

 private:
  bool append(const PropertyList& value);
  bool appendDate(PropertyList::Date date);
  bool appendArray(const PropertyList::Array& array);
  bool appendDictionary(const PropertyList::Dictionary& dictionary);
  void appendText(const QString& element, std::string_view text);

  QByteArray bytes_;
  QXmlStreamWriter xml_{&bytes_};
  int depth_ = 0;
};

std::optional<std::string> XmlPropertyListWriter::write(const PropertyList& value) {
  xml_.setAutoFormatting(true);
  xml_.setAutoFormattingIndent(-1);
  xml_.writeStartDocument();
  xml_.writeDTD(
      QStringLiteral("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                     "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"));
  xml_.writeStartElement(QStringLiteral("plist"));
  xml_.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
  if (!append(value)) return std::nullopt;
  xml_.writeEndDocument();
  if (xml_.hasError()) return std::nullopt;
  return bytes_.toStdString();
}

bool XmlPropertyListWriter::append(const PropertyList& value) {
  if (const bool* boolean = value.asBool()) {
    xml_.writeEmptyElement(*boolean ? QStringLiteral("true") : QStringLiteral("false"));
  } else if (const std::int64_t* integer = value.asInteger()) {
    xml_.writeTextElement(QStringLiteral("integer"), QString::number(*integer));
  } else if (const double* real = value.asReal()) {
    xml_.writeTextElement(QStringLiteral("real"), realText(*real));
  } else if (const std::string* string = value.asString()) {
    appendText(QStringLiteral("string"), *string);
  } else if (const PropertyList::Date* date = value.asDate()) {
    return appendDate(*date);
  } else if (const PropertyList::Data* data = value.asData()) {
    const QByteArrayView bytes(data->data(), static_cast<qsizetype>(data->size()));
    xml_.writeTextElement(QStringLiteral("data"),
                          QString::fromLatin1(bytes.toByteArray().toBase64()));
  } else if (const PropertyList::Array* array = value.asArray()) {
    return appendArray(*array);
  } else if (const PropertyList::Dictionary* dictionary = value.asDictionary()) {
    return appendDictionary(*dictionary);
  } else {
    return false;
  }
  return true;
}

bool XmlPropertyListWriter::appendDate(PropertyList::Date date) {
  const QString text = dateText(date);
  if (!text.isEmpty()) xml_.writeTextElement(QStringLiteral("date"), text);
  return !text.isEmpty();
}

bool XmlPropertyListWriter::appendArray(const PropertyList::Array& array) {
  if (depth_ == kNestingLimit) return false;
  depth_ += 1;
  xml_.writeStartElement(QStringLiteral("array"));
  for (const PropertyList& element : array) {
    if (!append(element)) return false;
  }
  xml_.writeEndElement();
  depth_ -= 1;
  return true;
}

bool XmlPropertyListWriter::appendDictionary(const PropertyList::Dictionary& dictionary) {
  if (depth_ == kNestingLimit) return false;
  depth_ += 1;
  xml_.writeStartElement(QStringLiteral("dict"));
  for (const auto& [key, value] : dictionary) {
    appendText(QStringLiteral("key"), key);
    if (!append(value)) return false;
  }
  xml_.writeEndElement();
  depth_ -= 1;
  return true;
}

void XmlPropertyListWriter::appendText(const QString& element, std::string_view text) {
  xml_.writeStartElement(element);
  // As itself a carriage return would read back as a line feed.
  const QString whole = xmlText(text);
  QStringView rest = whole;
  for (qsizetype at = rest.indexOf(u'\r'); at >= 0; at = rest.indexOf(u'\r')) {
    xml_.writeCharacters(rest.first(at).toString());
    xml_.writeEntityReference(QStringLiteral("#13"));
    rest = rest.sliced(at + 1);
  }
  xml_.writeCharacters(rest.toString());
  xml_.writeEndElement();
}

}  // namespace

std::optional<std::string> xmlPropertyList(const PropertyList& value) {
  return XmlPropertyListWriter().write(value);
}

std::optional<PropertyList> parsePropertyList(std::string_view bytes) {
  if (isBinaryPropertyList(bytes)) {
    const std::optional<QString> text = xmlFromBinaryPropertyList(bytes);
    if (!text) return std::nullopt;
    QXmlStreamReader xml(*text);
    return readXmlPropertyList(xml);
  }
  QXmlStreamReader xml(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())));
  return readXmlPropertyList(xml);
}

}  // namespace vembrix
