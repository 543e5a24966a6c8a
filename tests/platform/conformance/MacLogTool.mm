#include "platform/conformance/LogToolUnderTest.h"
#include "platform/macos/support/RunCommand.h"

namespace vembrix {
namespace {

/// Tests how the tool is run. The tool itself has a fixed path of the system, so another program
/// takes its place.
class MacLogTool : public LogToolUnderTest {
 public:
  void becomeScript(const std::string& script) override {
    command_ = {"/bin/sh", {"-c", script, "sh"}, {}};
    for (const std::string& argument : arguments()) command_.arguments.push_back(argument);
  }
  void forbid() override { command_.executable = "/etc/hosts"; }
  void vanish() override { command_.executable = "/no/such/tool"; }

  std::vector<std::string> arguments() const override { return {"a b", "\"", "", "\u00E9"}; }
  LogTool::Result run() const override { return runCommand(command_); }

 private:
  LogCommand command_;
};

}  // namespace

std::unique_ptr<LogToolUnderTest> LogToolUnderTest::create() {
  return std::make_unique<MacLogTool>();
}

}  // namespace vembrix
