// The output of the system's log tool.

#include <algorithm>

#include "Expect.h"
#include "platform/portable/Utf8.h"
#include "ui/DiagnosticLog.h"

namespace vembrix {
namespace {

class PrintingTool : public LogTool {
 public:
  explicit PrintingTool(std::string_view bytes) : bytes_(bytes) {}
  const LogCommand& command() const override { return command_; }
  Result run() const override { return Output{std::string(bytes_)}; }

 private:
  std::string_view bytes_;
  LogCommand command_;
};

}  // namespace
}  // namespace vembrix

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vembrix;
  const DiagnosticLog log = gatherDiagnosticLog(PrintingTool(textOf(data, size)));
  expect(!log.text.empty() && isUtf8(log.text));
  const auto ends = static_cast<std::size_t>(std::ranges::count(log.text, '\n'));
  expect(log.lineCount <= ends + 1);
  expect(log.lineCount > 0 || log.text.size() == ends);
  const std::optional<std::string> repaired = repairedUtf8(textOf(data, size));
  expect(repaired.has_value() != isUtf8(textOf(data, size)));
  if (repaired) expect(isUtf8(*repaired));
  return 0;
}
