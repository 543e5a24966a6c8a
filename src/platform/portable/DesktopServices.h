#pragma once

#include <memory>

#include "platform/Accessibility.h"
#include "platform/DockSwipeEvent.h"
#include "platform/EventTap.h"
#include "platform/InputMonitor.h"
#include "platform/Screens.h"
#include "platform/SpaceNaming.h"
#include "platform/WindowServer.h"
#include "platform/portable/SpaceWindows.h"

namespace vembrix {

/// The services of the seam that differ from one desktop to another. They live as long as the
/// desktop. Main thread.
class DesktopServices {
 public:
  virtual ~DesktopServices() = default;
  DesktopServices(const DesktopServices&) = delete;
  DesktopServices& operator=(const DesktopServices&) = delete;

  virtual Accessibility& accessibility() = 0;
  virtual InputMonitor& input() = 0;
  virtual const Screens& screens() = 0;
  virtual SpaceNaming& spaceNaming() = 0;
  virtual WindowServer& windowServer() = 0;
  /// The windows that belong to Spaces without a window manager, mainly the program's own.
  virtual SpaceWindows& windows() = 0;
  /// See DockSwipeEvent::create().
  virtual std::unique_ptr<DockSwipeEvent> makeSwipeEvent() = 0;
  /// See EventTap::create().
  virtual std::unique_ptr<EventTap> makeTap(EventTap::Handler handler) = 0;

 protected:
  DesktopServices() = default;
};

}  // namespace vembrix
