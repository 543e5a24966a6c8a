#include "platform/Accessibility.h"

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/linux/session/ChosenDesktop.h"

namespace vembrix {
namespace {

/// X11 knows no such permission: every client of a display may watch and post input.
class X11Accessibility : public Accessibility {
 public:
  bool isProcessTrusted(Prompt /*prompt*/) override { return true; }
};

}  // namespace

Accessibility& Accessibility::shared() {
  static X11Accessibility x11;
  return chosenDesktop().x11 ? x11 : EmbeddedDesktop::shared().accessibility();
}

}  // namespace vembrix
