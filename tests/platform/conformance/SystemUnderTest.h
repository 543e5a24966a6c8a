#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/InputMonitor.h"
#include "platform/MainQueue.h"
#include "platform/PropertyList.h"
#include "platform/WindowServer.h"

namespace vembrix {

/// The longest wait for an expected event on a busy machine; waits end as soon as it happens.
inline constexpr std::chrono::seconds kPatience{30};

/// The platform of a conformance suite from the outside: the actions of the user, the desktop and
/// other programs. One implementation per platform; the suites are the same for all.
class SystemUnderTest {
 public:
  /// Returns the system, created on first use, before any service of the platform is used.
  static SystemUnderTest& shared();

  virtual ~SystemUnderTest() = default;

  /// Lets the main queue run for that long.
  virtual void runFor(Duration duration) = 0;

  /// Runs the main queue until the condition holds, at most for `limit`. Returns whether it held.
  virtual bool runUntil(const std::function<bool()>& condition, Duration limit) = 0;

  /// The domain of the process's own settings.
  virtual std::string applicationDomain() = 0;

  /// Writes the whole domain as another program would: a dictionary, as a file or store of the
  /// platform's usual kind.
  virtual void writeDomain(std::string_view domain, const PropertyList& contents) = 0;

  /// Returns the domain as another program reads it: a dictionary, or null if there is no such
  /// domain.
  virtual PropertyList readDomain(std::string_view domain) = 0;

  /// Replaces the domain's bytes by some that are not a property list.
  virtual void damageDomain(std::string_view domain) = 0;

  /// Lines written to the system log since the start, oldest first.
  virtual std::vector<std::string> logLines() = 0;

  /// Gives the desktop that many Spaces, as the user or a settings program would.
  virtual void setSpaceCount(int count) = 0;

  /// Takes the user to the Space by means other than this program.
  virtual void goToSpace(WindowServer::SpaceID space) = 0;

  /// Switches the system between light and dark, as the user would.
  virtual void setAppearance(Appearance appearance) = 0;

  /// Resizes the primary screen, in points.
  virtual void resizeScreen(double width, double height) = 0;

  /// Shows a window of another program, of that size, in front of the others and active. Its
  /// windows are known by that name.
  virtual void showWindow(const std::string& owner, const Size& size) = 0;
  /// The name of a program that shows all windows at once, as the Dock does.
  virtual std::string dockName() = 0;

  // The user's input while another program is active.

  /// Presses and releases the button or a key there.
  virtual void press(EventMask type) = 0;
  /// Moves the pointer to that place, in points, global coordinates.
  virtual void moveMouse(Point location) = 0;
};

}  // namespace vembrix
