#include "platform/linux/ChosenDesktop.h"

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/SystemLog.h"
#include "platform/linux/ProgramEnd.h"
#include "platform/linux/X11Desktop.h"

namespace vembrix {
namespace {

constexpr std::chrono::seconds kWindowManagerPatience{3};

enum class Demand { None, X11, Embedded };

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

Demand demand() {
  const std::string_view value = environment("VEMBRIX_DESKTOP");
  if (value == "x11") return Demand::X11;
  if (value == "embedded") return Demand::Embedded;
  if (!value.empty()) {
    logLine("VEMBRIX_DESKTOP is neither \"x11\" nor \"embedded\", ignored: " + std::string(value));
  }
  return Demand::None;
}

ChosenDesktop embedded(bool hasDisplay) {
  if (!environment("QT_QPA_PLATFORM").empty()) return {};
  return {nullptr, hasDisplay ? "xcb" : "offscreen"};
}

ChosenDesktop withoutDisplay(Demand demanded) {
  const std::string display(environment("DISPLAY"));
  if (demanded == Demand::X11) {
    endProgram("VEMBRIX_DESKTOP is \"x11\", but no X server answers at display \"" + display +
               "\"");
  }
  if (demanded == Demand::None) {
    logLine("no X server answers at display \"" + display + "\", running without a screen");
  }
  return embedded(false);
}

ChosenDesktop choose() {
  const Demand demanded = demand();
  std::unique_ptr<X11Connection> connection = X11Connection::open();
  if (!connection) return withoutDisplay(demanded);
  if (demanded == Demand::Embedded) return embedded(true);
  auto desktop = std::make_unique<X11Desktop>(std::move(connection));
  if (demanded == Demand::None && !desktop->waitForWindowManager(kWindowManagerPatience)) {
    logLine("no window manager with desktops runs on this display, showing desktops of its own");
    return embedded(true);
  }
  // Never destroyed: whoever asks at the very end of the process must find it.
  return {desktop.release(), "xcb"};
}

}  // namespace

const ChosenDesktop& chosenDesktop() {
  static const ChosenDesktop chosen = choose();
  return chosen;
}

}  // namespace vembrix
