#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/linux/support/ChildProcess.h"
#include "platform/linux/support/TemporaryDirectory.h"
#include "platform/linux/support/X11Client.h"

namespace vembrix {

/// An X server of the test's own with a virtual screen of 1440 x 900 pixels and, once started, a
/// window manager.
class PrivateDisplay {
 public:
  /// Starts the server, which answers at DISPLAY when this returns.
  PrivateDisplay();

  /// With four desktops; ready when this returns. One at a time.
  void startWindowManager();
  /// It answers no more, as a program that hangs.
  void stopWindowManager() { windowManager_->stop(); }
  /// As a crash ends it.
  void killWindowManager();

  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] ChildProcess& server() { return *server_; }
  [[nodiscard]] X11Client& client() { return *client_; }

 private:
  TemporaryDirectory directory_;
  std::string name_;
  std::optional<ChildProcess> server_;
  std::optional<ChildProcess> windowManager_;
  std::unique_ptr<X11Client> client_;
};

}  // namespace vembrix
