#pragma once

#include <optional>
#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

/// What the binary form begins with.
constexpr std::string_view kBinaryPropertyListMagic = "bplist00";

/// Reads the binary form, version 00. A UID becomes a dictionary with the one
/// key "CF$UID", as in the XML form. Objects may be shared, but not so that the
/// list unfolds to more than 64 MiB.
std::optional<PropertyList> readBinaryPropertyList(std::string_view bytes);

}  // namespace vembrix
