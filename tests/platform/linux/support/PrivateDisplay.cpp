#include "platform/linux/support/PrivateDisplay.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

constexpr std::string_view kWindowManagerSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <theme><animateIconify>no</animateIconify></theme>
  <desktops><number>4</number><firstdesk>1</firstdesk><popupTime>0</popupTime></desktops>
</openbox_config>
)";

}  // namespace

PrivateDisplay::PrivateDisplay() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  server_.emplace(ChildProcess::Command{
      .words = {"Xvfb", "-displayfd", std::to_string(ChildProcess::kOutput), "-screen", "0",
                "1440x900x24", "-nolisten", "tcp", "-noreset"},
      .environment = {},
      .output = ends[1]});
  close(ends[1]);
  const std::string number = readLine(ends[0]);
  close(ends[0]);
  if (number.empty()) throw std::runtime_error("Xvfb did not start");
  name_ = ":" + number;
  TestSession::setVariable("DISPLAY", name_);
  client_ = std::make_unique<X11Client>(name_);
}

void PrivateDisplay::startWindowManager() {
  const std::string settings = directory_.write("rc.xml", kWindowManagerSettings);
  const std::string home = directory_.path().string();
  windowManager_.emplace(
      ChildProcess::Command{.words = {"openbox", "--sm-disable", "--config-file", settings},
                            .environment = {"DISPLAY=" + name_, "XDG_CONFIG_HOME=" + home,
                                            "XDG_DATA_HOME=" + home, "XDG_CACHE_HOME=" + home}});
  if (!client_->waitForWindowManager()) throw std::runtime_error("openbox did not start");
}

void PrivateDisplay::killWindowManager() {
  windowManager_->kill();
}

}  // namespace vembrix
