#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/SignWindow.h"
#include "platform/embedded/faces/EmbeddedAlphaFade.h"

namespace vembrix {

/// A label's view that records its state.
class RecordingSignView : public SignView {
 public:
  void setText(std::string_view text) override;
  void setFont(const Font& font) override;
  void setLook(const SignLook& look) override;
  void setNeedsDisplay() override { displayCount_ += 1; }

  const std::string& text() const { return text_; }
  const Font& font() const { return font_; }
  const SignLook& look() const { return look_; }
  /// Number of times that a value has changed.
  int changeCount() const { return changeCount_; }
  /// Number of requested redraws.
  int displayCount() const { return displayCount_; }

 private:
  std::string text_;
  Font font_;
  SignLook look_;
  int changeCount_ = 0;
  int displayCount_ = 0;
};

/// A label's window on the embedded desktop, among the other windows there.
/// Animations run evenly, on the embedded main queue's clock.
class RecordingSignWindow : public SignWindow {
 public:
  /// All existing windows, in the order of creation.
  static const std::vector<RecordingSignWindow*>& all();
  /// Returns the windows in that Space, including those that are also in others.
  static std::vector<RecordingSignWindow*> inSpace(WindowServer::SpaceID space);

  explicit RecordingSignWindow(const Options& options);
  ~RecordingSignWindow() override;
  RecordingSignWindow(const RecordingSignWindow&) = delete;
  RecordingSignWindow& operator=(const RecordingSignWindow&) = delete;

  WindowServer::WindowNumber windowNumber() const override { return number_; }
  RecordingSignView& view() override { return view_; }
  const RecordingSignView& view() const { return view_; }
  Rect frame() const override;
  void setFrame(const Rect& frame) override;
  void setCollectionBehavior(std::uint64_t behavior) override;
  double alphaValue() const override { return alpha_.value(); }
  void setAlphaValue(double alpha) override;
  void animateAlphaValue(double alpha, Duration duration) override;
  void orderFront() override;

  const Options& options() const { return options_; }
  std::uint64_t collectionBehavior() const;
  bool isOrderedIn() const;
  const EmbeddedAlphaFade& alpha() const { return alpha_; }
  bool isAnimating() const { return alpha_.isRunning(); }
  /// The alpha value, or the target of its animation.
  double finalAlphaValue() const { return alpha_.finalValue(); }
  /// Number of times that the alpha value was set or an animation begun.
  int alphaCount() const { return alphaCount_; }

 private:
  Options options_;
  WindowServer::WindowNumber number_;
  RecordingSignView view_;
  EmbeddedAlphaFade alpha_;
  int alphaCount_ = 0;
};

}  // namespace vembrix
