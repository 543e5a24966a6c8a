#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/LogTool.h"

namespace vembrix {

/// The log lines that a user hands to support.
struct DiagnosticLog {
  std::string text;
  /// Number of lines that are not empty.
  std::size_t lineCount = 0;

  bool operator==(const DiagnosticLog&) const = default;
};

/// Returns the program's recent log lines as the tool prints them, or a sentence if there are none.
/// Blocks while the tool runs; any thread but the main one.
DiagnosticLog gatherDiagnosticLog(const LogTool& tool);

/// Counts the lines, separated by line feeds, that are not empty. Any thread.
std::size_t countLines(std::string_view text);

/// Returns the status text: "Copied 2 log lines to clipboard." Any thread.
std::string copiedLinesStatus(std::size_t lineCount);

}  // namespace vembrix
