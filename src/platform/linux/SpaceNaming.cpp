#include "platform/SpaceNaming.h"

#include <utility>

#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/session/X11Services.h"

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

}  // namespace

SpaceNaming& X11Services::spaceNaming() {
  static auto& naming = *new X11SpaceNaming(desktop_);
  return naming;
}

SpaceNaming* SpaceNaming::shared() {
  return &chosenDesktop().services.spaceNaming();
}

}  // namespace vembrix
