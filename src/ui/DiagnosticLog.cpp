#include "ui/DiagnosticLog.h"

#include <utility>

#include "platform/portable/Utf8.h"

namespace vembrix {
namespace {

constexpr const char* kNoOutput = "(no log output — make sure you reproduced the issue recently)";

std::string textOf(LogTool::Output output) {
  if (output.bytes.empty() || !isUtf8(output.bytes)) return kNoOutput;
  return std::move(output.bytes);
}

std::string textOf(const LogTool::LaunchFailure& failure, const LogCommand& command) {
  return "Failed to run log command: " + failure.description +
         "\n\nRun this in Terminal instead:\n" + command.shellText;
}

}  // namespace

DiagnosticLog gatherDiagnosticLog(const LogTool& tool) {
  LogTool::Result result = tool.run();
  auto* output = std::get_if<LogTool::Output>(&result);
  std::string text = output ? textOf(std::move(*output))
                            : textOf(std::get<LogTool::LaunchFailure>(result), tool.command());
  // Counted here, off the main thread, as the log may be large.
  const std::size_t lines = countLines(text);
  return {std::move(text), lines};
}

std::size_t countLines(std::string_view text) {
  std::size_t count = 0;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    if (end != 0) count += 1;
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return count;
}

std::string copiedLinesStatus(std::size_t lineCount) {
  return "Copied " + std::to_string(lineCount) + (lineCount == 1 ? " log line" : " log lines") +
         " to clipboard.";
}

}  // namespace vembrix
