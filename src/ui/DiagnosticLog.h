#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/LogTool.h"

namespace vembrix {

/// What a user hands to support, and how the window speaks of it.
struct DiagnosticLog {
  std::string text;
  /// Lines that are not empty.
  std::size_t lineCount = 0;

  bool operator==(const DiagnosticLog&) const = default;
};

/// The program's recent log lines as the tool prints them, or a sentence in
/// their place. Blocks as long as the tool runs; any thread but the main one.
DiagnosticLog gatherDiagnosticLog(const LogTool& tool);

/// Lines that are not empty, parted by line feeds. Any thread.
std::size_t countLines(std::string_view text);

/// "Copied 2 log lines to clipboard." Any thread.
std::string copiedLinesStatus(std::size_t lineCount);

}  // namespace vembrix
