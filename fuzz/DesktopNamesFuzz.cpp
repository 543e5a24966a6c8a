// Names of desktops, as stored by the window manager and as typed by the user.

#include "Expect.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"
#include "platform/linux/x11/DesktopNames.h"
#include "spaces/SpaceManager.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vembrix;
  static SpaceManager& manager = []() -> SpaceManager& {
    EmbeddedDesktop::shared().setSpaceCount(3);
    SpaceManager::shared().reload();
    return SpaceManager::shared();
  }();
  const std::vector<std::string> names = desktopNames(textOf(data, size), size);
  const std::string property = desktopNamesProperty(names);
  expect(desktopNames(property, size) == names);
  expect(property.size() == size || property.size() == size + 1);
  const SpaceInfo space = manager.spaces().at(1);
  for (const std::string& name : names) {
    manager.setName(name, space);
    const std::string shown = manager.displayName(space);
    expect(!shown.empty());
    manager.setName(shown, space);
    expect(manager.displayName(space) == shown);
  }
  return 0;
}
