#include "platform/SpaceNaming.h"

#include <utility>

#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/x11/X11Desktop.h"

namespace vembrix {
namespace {

class X11SpaceNaming : public SpaceNaming {
 public:
  explicit X11SpaceNaming(X11Desktop& desktop) : desktop_(desktop) {}

  void setHandlers(Handlers handlers) override { desktop_.setNameHandlers(std::move(handlers)); }
  std::string_view ownName(SpaceID space) const override { return desktop_.ownName(space); }
  void setName(SpaceID space, std::string_view name) override { desktop_.setName(space, name); }
  void clearName(SpaceID space, std::string_view fallback) override {
    desktop_.clearName(space, fallback);
  }

 private:
  X11Desktop& desktop_;
};

SpaceNaming& choose() {
  X11Desktop* x11 = chosenDesktop().x11;
  if (!x11) return EmbeddedDesktop::shared().spaceNaming();
  static X11SpaceNaming naming(*x11);
  return naming;
}

}  // namespace

SpaceNaming* SpaceNaming::shared() {
  static SpaceNaming& naming = choose();
  return &naming;
}

}  // namespace vembrix
