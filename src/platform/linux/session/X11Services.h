#pragma once

#include "platform/linux/x11/X11Desktop.h"
#include "platform/portable/DesktopServices.h"

namespace vembrix {

/// The services on the desktop of the X session. Each is created on first use, in the file named
/// after it, and never destroyed, because Qt, which calls them, is not either. Main thread.
class X11Services : public DesktopServices {
 public:
  /// The desktop must outlive the process's last use of a service.
  explicit X11Services(X11Desktop& desktop) : desktop_(desktop) {}

  Accessibility& accessibility() override;
  InputMonitor& input() override;
  const Screens& screens() override;
  SpaceNaming& spaceNaming() override;
  WindowServer& windowServer() override;
  SpaceWindows& windows() override { return desktop_.windows(); }
  std::unique_ptr<DockSwipeEvent> makeSwipeEvent() override;
  std::unique_ptr<EventTap> makeTap(EventTap::Handler handler) override;

 private:
  X11Desktop& desktop_;
};

}  // namespace vembrix
