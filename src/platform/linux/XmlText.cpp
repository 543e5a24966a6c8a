#include "platform/linux/XmlText.h"

#include <QStringDecoder>

namespace vembrix {

QString xmlText(std::string_view utf8) {
  using Flag = QStringConverter::Flag;
  // A byte order mark is a character of the text as any other.
  QStringDecoder decode(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
  QString text = decode(QByteArrayView(utf8.data(), static_cast<qsizetype>(utf8.size())));
  for (QChar& unit : text) {
    const bool isControl = unit < u' ' && unit != u'\t' && unit != u'\n' && unit != u'\r';
    if (isControl || unit >= u'\uFFFE') unit = QChar::ReplacementCharacter;
  }
  return text;
}

}  // namespace vembrix
