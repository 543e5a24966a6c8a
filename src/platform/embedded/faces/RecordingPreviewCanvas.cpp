#include "platform/embedded/faces/RecordingPreviewCanvas.h"

#include <utility>

namespace vembrix {

PreviewCanvas& PreviewCanvas::shared() {
  return RecordingPreviewCanvas::shared();
}

RecordingPreviewCanvas& RecordingPreviewCanvas::shared() {
  static RecordingPreviewCanvas canvas;
  return canvas;
}

std::optional<std::string> RecordingPreviewCanvas::draw(SettingsContent content) {
  return record(std::move(content));
}

std::optional<std::string> RecordingPreviewCanvas::draw(MenuMock mock) {
  return record(std::move(mock));
}

std::optional<std::string> RecordingPreviewCanvas::record(Drawing drawing) {
  drawings_.push_back(std::move(drawing));
  if (!ableToDraw_) return std::nullopt;
  return "\x89PNG\r\n\x1a\n" + std::to_string(drawings_.size() - 1);
}

}  // namespace vembrix
