#include <filesystem>
#include <fstream>

#include "platform/conformance/LogToolUnderTest.h"
#include "platform/linux/support/TemporaryDirectory.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

/// The platform's own tool, whose program is the only one on the path.
class LinuxLogTool : public LogToolUnderTest {
 public:
  LinuxLogTool() { TestSession::setVariable("PATH", tools_.path().string()); }

  void becomeScript(const std::string& script) override {
    std::ofstream(program()) << "#!/bin/sh\n" << script << "\n";
    std::filesystem::permissions(program(), std::filesystem::perms::owner_all);
  }
  void forbid() override {
    std::filesystem::permissions(program(), std::filesystem::perms::owner_read);
  }
  void vanish() override { std::filesystem::remove(program()); }

  std::vector<std::string> arguments() const override {
    return LogTool::shared().command().arguments;
  }
  LogTool::Result run() const override { return LogTool::shared().run(); }

 private:
  std::filesystem::path program() const {
    return tools_.path() / LogTool::shared().command().executable;
  }

  TestSession session_;
  TemporaryDirectory tools_;
};

}  // namespace

std::unique_ptr<LogToolUnderTest> LogToolUnderTest::create() {
  return std::make_unique<LinuxLogTool>();
}

}  // namespace vembrix
