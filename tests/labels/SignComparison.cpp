#include "labels/SignComparison.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <ostream>
#include <set>
#include <sstream>
#include <vector>

#include "platform/embedded/faces/RecordingTourOverlay.h"
#include "platform/embedded/services/EmbeddedMainQueue.h"

namespace vembrix {
namespace {

/// The observable state of an alpha value.
struct AlphaState {
  double now = 0;
  double target = 0;
  /// The end of a fade under way, which may lead back to where it began; empty at rest.
  std::optional<Duration> end;
};

std::optional<Duration> ifAhead(Duration time) {
  return time > EmbeddedMainQueue::shared().now() ? std::optional(time) : std::nullopt;
}
AlphaState stateOf(const SignModel::Alpha& alpha) {
  return {SignModel::now(alpha), alpha.to, ifAhead(alpha.end)};
}
AlphaState stateOf(const EmbeddedAlphaFade& alpha) {
  return {alpha.value(), alpha.finalValue(), ifAhead(alpha.end())};
}

bool isNear(double a, double b) {
  return std::abs(a - b) < 1e-9;
}
bool isNear(const Srgb& a, const Srgb& b) {
  return isNear(a.red, b.red) && isNear(a.green, b.green) && isNear(a.blue, b.blue) &&
         isNear(a.alpha, b.alpha);
}
bool isNear(const Rect& a, const Rect& b) {
  return isNear(a.x, b.x) && isNear(a.y, b.y) && isNear(a.width, b.width) &&
         isNear(a.height, b.height);
}
bool isNear(const AlphaState& a, const AlphaState& b) {
  return isNear(a.now, b.now) && isNear(a.target, b.target) && a.end == b.end;
}

std::ostream& operator<<(std::ostream& out, const AlphaState& alpha) {
  out << alpha.now;
  if (!alpha.end) return out;
  return out << " to " << alpha.target << " at " << alpha.end->count() << " ns";
}
std::ostream& operator<<(std::ostream& out, const Rect& rect) {
  return out << rect.x << ' ' << rect.y << ' ' << rect.width << " x " << rect.height;
}
std::ostream& operator<<(std::ostream& out, const Srgb& color) {
  return out << color.red << ' ' << color.green << ' ' << color.blue << ' ' << color.alpha;
}
std::ostream& operator<<(std::ostream& out, const std::set<WindowServer::SpaceID>& spaces) {
  for (const auto space : spaces) out << space << ' ';
  return out;
}
std::ostream& operator<<(std::ostream& out, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) out << text << ' ';
  return out;
}

}  // namespace

SignComparison::SignComparison(const SignModel& model, const LabelWindows& windows, bool isWritten)
    : isWritten_(isWritten) {
  compareLabels(model, windows);
  compareOverlays(model);
  compareRecency(model);
}

template <typename T>
void SignComparison::line(std::string_view what, const T& model, const T& product, bool isSame) {
  isSame_ = isSame_ && isSame;
  if (!isWritten_) return;
  std::ostringstream text;
  text.precision(12);
  text << (isSame ? "     " : "  !! ") << what << ": " << model << " | " << product << '\n';
  text_ += text.str();
}

void SignComparison::compareLabels(const SignModel& model, const LabelWindows& windows) {
  const auto& all = RecordingSignWindow::all();
  std::set<WindowServer::SpaceID> owners;
  for (const RecordingSignWindow* window : all) owners.insert(windows.ownerOf(*window));
  line("windows", model.labels().size(), all.size(), model.labels().size() == all.size());
  line("Spaces with a label", model.labels().size(), owners.size(),
       model.labels().size() == owners.size());
  for (const RecordingSignWindow* window : all) {
    const auto owner = windows.ownerOf(*window);
    const auto label = model.labels().find(owner);
    const bool isThere = label != model.labels().end();
    if (isWritten_) text_ += "label of Space " + std::to_string(owner) + '\n';
    line("is there", isThere, true, isThere);
    if (isThere) compareLabel(label->second, *window);
  }
}

void SignComparison::compareLabel(const SignModel::Label& label,
                                  const RecordingSignWindow& window) {
  const RecordingSignView& view = window.view();
  const auto near = [&](std::string_view what, const auto& model, const auto& product) {
    line(what, model, product, isNear(model, product));
  };
  const auto equal = [&](std::string_view what, const auto& model, const auto& product) {
    line(what, model, product, model == product);
  };
  near("alpha", stateOf(label.alpha), stateOf(window.alpha()));
  equal("behavior", label.behavior, window.collectionBehavior());
  equal("text", label.text, view.text());
  near("text size", label.textSize, view.font().size.value_or(0));
  near("frame", label.frame, window.frame());
  near("fill", label.look.fill, view.look().fill);
  near("text color", label.look.textColor, view.look().textColor);
  near("rim", label.look.rim, view.look().rim);
  near("border", label.look.borderWidth, view.look().borderWidth);
  equal("in Spaces", label.spaces, LabelWindows::spacesOf(window));
  equal("drawn anew", label.displays, view.displayCount());
  equal("on screen", true, window.isOrderedIn());
}

void SignComparison::compareOverlays(const SignModel& model) {
  const auto& expected = model.overlays();
  const auto& windows = RecordingTourOverlay::windows();
  line("overlays", expected.size(), windows.size(), expected.size() == windows.size());
  for (std::size_t i = 0; i < std::min(expected.size(), windows.size()); ++i) {
    const AlphaState alpha = stateOf(expected[i]->alpha);
    const AlphaState windowAlpha = stateOf(windows[i]->alpha());
    line("overlay's alpha", alpha, windowAlpha, isNear(alpha, windowAlpha));
    const Rect& frame = windows[i]->content().frame;
    line("overlay's frame", expected[i]->frame, frame, isNear(expected[i]->frame, frame));
  }
}

void SignComparison::compareRecency(const SignModel& model) {
  // The order is stored as a whole at its first change.
  const auto stored = model::strings("SpaceHeatRecency");
  line("recency", model.recency(), stored, stored == model.recency());
}

}  // namespace vembrix
