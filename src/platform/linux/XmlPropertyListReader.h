#pragma once

#include <optional>

#include "platform/PropertyList.h"

class QXmlStreamReader;

namespace vembrix {

/// Reads a property list in the XML form, to the end of the document.
std::optional<PropertyList> readXmlPropertyList(QXmlStreamReader& xml);

}  // namespace vembrix
