#pragma once

#include <optional>
#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

/// Reads the XML form, in UTF-8 with or without a byte order mark. Entities are
/// the five that XML itself has and character references; a document type with
/// declarations of its own is refused, and so are other encodings.
std::optional<PropertyList> readXmlPropertyList(std::string_view bytes);

}  // namespace vembrix
