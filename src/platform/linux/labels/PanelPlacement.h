#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/Geometry.h"
#include "platform/WindowServer.h"
#include "platform/WindowTraits.h"

class QWindow;

namespace vembrix {

/// A panel's window among the others of the desktop, and in its Spaces. Main thread.
class PanelPlacement {
 public:
  struct Options {
    Rect frame;
    WindowLevel level{};
    std::uint64_t collectionBehavior = 0;
    /// Shows the window, or takes it off the screen.
    std::function<void(bool)> setShown;
  };

  /// On the desktop that the program runs on. The window has its native one, and
  /// outlives the placement.
  static std::unique_ptr<PanelPlacement> create(QWindow& window, Options options);

  virtual ~PanelPlacement() = default;

  [[nodiscard]] virtual WindowServer::WindowNumber number() const = 0;
  virtual void setFrame(const Rect& frame) = 0;
  virtual void setCollectionBehavior(std::uint64_t behavior) = 0;
  /// The first time the window is shown after the current event, so that it may still
  /// be told where.
  virtual void orderFront() = 0;
};

}  // namespace vembrix
