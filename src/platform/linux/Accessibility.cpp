#include "platform/Accessibility.h"

#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/session/X11Services.h"

namespace vembrix {
namespace {

/// X11 has no such permission: every client of a display may observe and post input.
class X11Accessibility : public Accessibility {
 public:
  bool isProcessTrusted(Prompt /*prompt*/) override { return true; }
};

}  // namespace

Accessibility& X11Services::accessibility() {
  static auto& accessibility = *new X11Accessibility;
  return accessibility;
}

Accessibility& Accessibility::shared() {
  return chosenDesktop().services.accessibility();
}

}  // namespace vembrix
