#pragma once

#include <optional>

#include "platform/PropertyList.h"

class QXmlStreamReader;

namespace vembrix {

/// How deep arrays and dictionaries may be nested where they are read or
/// written: a file of unknown origin must not be able to use up the stack.
constexpr int kNestingLimit = 512;

/// Reads a property list in the XML form, to the end of the document.
std::optional<PropertyList> readXmlPropertyList(QXmlStreamReader& xml);

}  // namespace vembrix
