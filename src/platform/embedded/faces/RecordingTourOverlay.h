#pragma once

#include <memory>
#include <vector>

#include "platform/TourOverlay.h"
#include "platform/WindowServer.h"
#include "platform/embedded/faces/EmbeddedAlphaFade.h"

namespace vembrix {

/// An overlay of the tour on the embedded desktop, among the other windows there.
/// Fades run evenly, on the embedded main queue's clock.
class RecordingTourOverlay : public TourOverlay {
 public:
  /// A visible window of an overlay. Exists until it is ordered out, possibly after the overlay's
  /// end.
  class Window {
   public:
    explicit Window(const TourOverlayContent& content);
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    const TourOverlayContent& content() const { return content_; }
    WindowServer::WindowNumber number() const { return number_; }
    bool isOrderedIn() const;
    EmbeddedAlphaFade& alpha() { return alpha_; }
    double alphaValue() const { return alpha_.value(); }

   private:
    TourOverlayContent content_;
    WindowServer::WindowNumber number_;
    EmbeddedAlphaFade alpha_;
  };

  /// The windows that exist, in the order of their creation.
  static const std::vector<Window*>& windows();

  explicit RecordingTourOverlay(const TourOverlayContent& content)
      : window_(std::make_shared<Window>(content)) {}

  void show(Duration fade) override;
  void hide(Duration fade) override;

 private:
  std::shared_ptr<Window> window_;
};

}  // namespace vembrix
