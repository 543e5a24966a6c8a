#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/linux/support/ChildProcess.h"
#include "platform/linux/support/TemporaryDirectory.h"
#include "platform/linux/support/X11Client.h"

namespace vembrix {

/// A private X server with a virtual screen of 1440 x 900 pixels and, once started, a window
/// manager.
class PrivateDisplay {
 public:
  /// Starts the server. It answers at DISPLAY when this returns.
  PrivateDisplay();

  /// Starts a window manager with four desktops, which is ready when this returns. One at a time.
  void startWindowManager();
  /// Makes the window manager hang: it no longer answers.
  void stopWindowManager() { windowManager_->stop(); }
  void resumeWindowManager() { windowManager_->resume(); }
  /// Kills the window manager, like a crash.
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
