#include "platform/WindowServer.h"

#include <optional>

#include "platform/Application.h"
#include "platform/embedded/EmbeddedDesktop.h"
#include "platform/linux/ChosenDesktop.h"
#include "platform/linux/X11Desktop.h"
#include "platform/linux/X11WindowList.h"

namespace vembrix {
namespace {

class X11WindowServer : public WindowServer {
 public:
  explicit X11WindowServer(X11Desktop& desktop) : desktop_(desktop) {}

  // There is one connection, whatever it is called.
  ConnectionID CGSMainConnectionID() override { return 1; }

  PropertyList CGSCopyManagedDisplaySpaces(ConnectionID /*connection*/) override {
    return desktop_.managedDisplaySpaces();
  }

  SpaceID CGSGetActiveSpace(ConnectionID /*connection*/) override { return desktop_.activeSpace(); }

  void CGSManagedDisplaySetCurrentSpace(ConnectionID /*connection*/, std::string_view display,
                                        SpaceID space) override {
    if (display == X11Desktop::kDisplay) desktop_.activate(space);
  }

  PropertyList CGWindowListCopyWindowInfo(std::uint32_t options) override {
    if (!windows_) {
      // Its connection needs the application's event loop.
      Application::shared();
      windows_.emplace(X11Connection::open(), desktop_);
    }
    return windows_->list(options);
  }

 private:
  X11Desktop& desktop_;
  /// Followed from the first question on.
  std::optional<X11WindowList> windows_;
};

WindowServer& choose() {
  X11Desktop* x11 = chosenDesktop().x11;
  if (!x11) return EmbeddedDesktop::shared().windowServer();
  // Never destroyed: Qt, which feeds it, is not either.
  static auto& server = *new X11WindowServer(*x11);
  return server;
}

}  // namespace

WindowServer& WindowServer::shared() {
  static WindowServer& server = choose();
  return server;
}

}  // namespace vembrix
