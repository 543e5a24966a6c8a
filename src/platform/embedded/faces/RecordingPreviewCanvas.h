#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "platform/PreviewCanvas.h"

namespace vembrix {

/// A canvas that records what it was to draw. Its pictures are the PNG signature and the number,
/// from 0, of the drawing.
class RecordingPreviewCanvas : public PreviewCanvas {
 public:
  using Drawing = std::variant<SettingsContent, MenuMock>;

  /// The canvas behind PreviewCanvas::shared().
  static RecordingPreviewCanvas& shared();

  std::optional<std::string> draw(SettingsContent content) override;
  std::optional<std::string> draw(MenuMock mock) override;

  /// The drawings in their order.
  const std::vector<Drawing>& drawings() const { return drawings_; }
  /// Sets whether later drawings succeed.
  void setAbleToDraw(bool able) { ableToDraw_ = able; }

 private:
  std::optional<std::string> record(Drawing drawing);

  std::vector<Drawing> drawings_;
  bool ableToDraw_ = true;
};

}  // namespace vembrix
