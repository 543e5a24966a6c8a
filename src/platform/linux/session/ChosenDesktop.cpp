#include "platform/linux/session/ChosenDesktop.h"

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/SystemLog.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/linux/session/X11Services.h"
#include "platform/linux/x11/ProgramEnd.h"

namespace vembrix {
namespace {

constexpr std::chrono::seconds kCompositorPatience{3};

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

bool wantsEmbedded() {
  const std::string_view value = environment("VEMBRIX_DESKTOP");
  if (value == "embedded") return true;
  if (!value.empty() && value != "x11") {
    logLine("VEMBRIX_DESKTOP is neither \"x11\" nor \"embedded\", ignored: " + std::string(value));
  }
  return false;
}

ChosenDesktop embedded(const char* qtPlatform) {
  return {EmbeddedDesktop::shared(), nullptr,
          environment("QT_QPA_PLATFORM").empty() ? qtPlatform : nullptr};
}

struct Choice {
  ChosenDesktop desktop;
  /// Whether the user has asked for the desktop in the process.
  bool isEmbeddedWanted = false;
};

Choice choose() {
  const bool isEmbeddedWanted = wantsEmbedded();
  std::unique_ptr<X11Connection> connection = X11Connection::open();
  if (!connection) return {embedded("offscreen"), isEmbeddedWanted};
  if (isEmbeddedWanted) return {embedded("xcb"), true};
  // Never destroyed: both must exist until the very end of the process.
  auto& desktop = *new X11Desktop(std::move(connection));
  auto& services = *new X11Services(desktop);
  return {{services, &desktop, "xcb"}, false};
}

const Choice& choice() {
  static const Choice made = choose();
  return made;
}

}  // namespace

EmbeddedDesktop& EmbeddedDesktop::shared() {
  static EmbeddedDesktop desktop;
  return desktop;
}

const ChosenDesktop& chosenDesktop() {
  return choice().desktop;
}

void requireDesktop() {
  if (choice().isEmbeddedWanted) return;
  X11Desktop* x11 = chosenDesktop().x11;
  if (!x11) {
    endProgram("no X server answers at display \"" + std::string(environment("DISPLAY")) +
               "\": Vembrix needs an X11 session, or a Wayland session of KWin");
  }
  if (!x11->spaceCount() && x11->isXwayland() && !x11->waitForSpaces(kCompositorPatience)) {
    endProgram(
        "the compositor of this Wayland session gives X11 programs no desktops: Vembrix needs "
        "an X11 session, or a Wayland session of KWin");
  }
}

SpaceWindows& chosenWindows() {
  return chosenDesktop().services.windows();
}

}  // namespace vembrix
