#include "platform/embedded/RecordingDropdownMenu.h"

namespace vembrix {

std::unique_ptr<DropdownMenu> DropdownMenu::create() {
  return std::make_unique<RecordingDropdownMenu>();
}

}  // namespace vembrix
