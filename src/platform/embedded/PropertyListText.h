#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

// The text of property-list values in the XML form. White space around a value
// has no meaning; the readers take it away.

/// To the second before; nothing beyond the years 0 to 9999.
std::optional<std::string> dateText(PropertyList::Date date);
std::optional<PropertyList::Date> parseDate(std::string_view text);

/// Base64 (RFC 4648, padded). The reader ignores white space within.
std::string dataText(const PropertyList::Data& data);
std::optional<PropertyList::Data> parseData(std::string_view text);

/// Decimal, or hexadecimal after 0x. A number beyond 63 bits becomes a real, one
/// beyond 64 bits is none.
std::optional<PropertyList> parseInteger(std::string_view text);

/// As the system writes a real, infinities and "nan" included.
std::string propertyListRealText(double value);
std::optional<double> parsePropertyListReal(std::string_view text);

/// Without the white space at both ends.
std::string_view trimXmlSpace(std::string_view text);

}  // namespace vembrix
