#include "labels/SignModel.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/Accessibility.h"
#include "platform/InputMonitor.h"
#include "platform/TextSize.h"
#include "platform/embedded/desktop/EmbeddedDesktop.h"

namespace vembrix {
namespace {

using std::chrono::milliseconds;

double textSizeSetting() {
  return model::number("SignTextSize", 160);
}

double mix(double a, double b, double t) {
  return a + t * (b - a);
}

EmbeddedDesktop& desktop() {
  return EmbeddedDesktop::shared();
}

Rect frameFor(const std::string& text) {
  const Rect screen = model::mainScreen();
  const Size size = textSize(text, {.weight = Font::Weight::Heavy, .size = textSizeSetting()});
  const double width = std::min(size.width + 160, 0.9 * screen.width);
  const double height = std::min(size.height + 120, 0.6 * screen.height);
  return {screen.x + screen.width / 2 - width / 2, screen.y + screen.height / 2 - height / 2, width,
          height};
}

}  // namespace

SignModel::SignModel() {
  tap_ = desktop().events().makeTap(
      [this](std::uint32_t type, const TappedEvent& event) { gesture(type, event); });
  tap_->enable();
}

void SignModel::begin() {
  recency_ = model::strings("SpaceHeatRecency");
  names_ = model::names();
  watchesSwipes_ = Accessibility::shared().isProcessTrusted(Accessibility::Prompt::No);
  spaces_ = model::listedSpaces();
  active_ = model::activeSpace();
  ensureLabelOfActiveSpace();

  timers_[0] = MainQueue::main().repeat(milliseconds(0), milliseconds(300),
                                        [this] { lookForMissionControl(); });
  timers_[1] = MainQueue::main().repeat(milliseconds(500), milliseconds(500), [this] { tick(); });
  InputMonitor& input = InputMonitor::shared();
  monitors_[0] = input.addGlobalMonitor(MouseMoved, [this] { mouseMoved(); });
  monitors_[1] = input.addGlobalMonitor(LeftMouseDown | RightMouseDown | OtherMouseDown | KeyDown,
                                        [this] { clickedOrTyped(); });

  NotificationCenter& center = NotificationCenter::defaultCenter();
  NotificationCenter& workspace = NotificationCenter::workspace();
  observations_ = {
      workspace.addObserver("NSWorkspaceActiveSpaceDidChangeNotification",
                            [this] {
                              reload();
                              prime();
                            }),
      workspace.addObserver("NSWorkspaceDidWakeNotification", [this] { prime(); }),
      center.addObserver("NSApplicationDidChangeScreenParametersNotification",
                         [this] { screensChanged(); }),
      center.addObserver("PreferencesStoreDidChange", [this] { settingsChanged(); }),
      center.addObserver("SpaceManagerTourWillStart", [this] { tourWillStart(); }),
      center.addObserver("SpaceManagerTourDidEnd", [this] { tourDidEnd(); }),
  };
}

// Spaces and names

void SignModel::reload() {
  const auto former = std::exchange(spaces_, model::listedSpaces());
  const auto formerActive = std::exchange(active_, model::activeSpace());
  if (spaces_ != former) spacesChanged();
  if (active_ != formerActive) activeChanged();
}

void SignModel::renamed(const std::string& uuid, std::string_view name) {
  const auto first = name.find_first_not_of(" \t\n");
  if (first == std::string_view::npos) {
    names_.erase(uuid);
  } else {
    names_[uuid] = name.substr(first, name.find_last_not_of(" \t\n") - first + 1);
  }
  spacesChanged();
}

const model::Space* SignModel::find(SpaceID id) const {
  const auto found = std::ranges::find(spaces_, id, &model::Space::id);
  return found == spaces_.end() ? nullptr : &*found;
}

std::vector<model::Space> SignModel::desktops() const {
  std::vector<model::Space> desktops;
  std::ranges::copy_if(spaces_, std::back_inserter(desktops),
                       [](const model::Space& space) { return space.type == 0; });
  return desktops;
}

std::string SignModel::nameOf(const model::Space& space) const {
  const auto given = names_.find(space.uuid);
  if (given != names_.end() && !given->second.empty()) return given->second;
  int number = 0;
  for (const model::Space& other : spaces_) {
    if (other.type != 0 || other.display != space.display) continue;
    number += 1;
    if (other == space) return "Desktop " + std::to_string(number);
  }
  return "Desktop";
}

// Labels and their places

SignModel::Label& SignModel::make(const model::Space& space, double heat, double alpha) {
  Label& label = labels_[space.id];
  label = {};
  layOut(label, nameOf(space));
  label.text = nameOf(space);
  label.textSize = textSizeSetting();
  label.behavior = managedBehavior;
  label.heat = heat;
  tint(label);
  set(label, alpha);
  // A new label is in the active Space.
  if (desktop().activeSpace() != 0) label.spaces = {desktop().activeSpace()};
  census_.mostLabels = std::max(census_.mostLabels, labels_.size());
  return label;
}

void SignModel::ensureLabelOfActiveSpace() {
  const model::Space* space = active();
  if (!space) return;
  if (space->type != 0) {
    census_.fullScreenVisits += 1;
    return;
  }
  const auto label = labels_.find(active_);
  if (label != labels_.end()) {
    label->second.text = nameOf(*space);
  } else {
    addTo(make(*space, heatOf(space->uuid, true), 0), active_);
  }
}

void SignModel::layOut(Label& label, const std::string& name) {
  label.frame = frameFor(name);
}

void SignModel::addTo(Label& label, SpaceID space) {
  // The window server ignores unknown Spaces.
  if (std::ranges::count(desktop().spaceIDs(), space) > 0) label.spaces.insert(space);
}

void SignModel::windowMoved(SpaceID label, std::set<SpaceID> spaces) {
  const auto found = labels_.find(label);
  if (found != labels_.end()) found->second.spaces = std::move(spaces);
}

void SignModel::putBackStrayLabels() {
  for (auto& [id, label] : labels_) {
    if (label.spaces.empty() || label.spaces == std::set{id}) continue;
    census_.putBack += 1;
    addTo(label, id);
    std::erase_if(label.spaces, [home = id](SpaceID other) { return other != home; });
  }
}

void SignModel::spacesChanged() {
  const auto all = desktops();
  census_.labelsDropped += static_cast<int>(std::erase_if(labels_, [&](const auto& entry) {
    return std::ranges::count(all, entry.first, &model::Space::id) == 0;
  }));
  for (const model::Space& space : all) {
    const auto label = labels_.find(space.id);
    if (label == labels_.end()) continue;
    label->second.text = nameOf(space);
    layOut(label->second, label->second.text);
  }
  refreshHeat();
}

void SignModel::screensChanged() {
  for (auto& [id, label] : labels_) {
    if (const model::Space* space = find(id)) layOut(label, nameOf(*space));
  }
}

void SignModel::settingsChanged() {
  screensChanged();
  refreshHeat();
  for (auto& [id, label] : labels_) {
    label.textSize = textSizeSetting();
    tint(label);
  }
}

void SignModel::refreshHeat() {
  for (auto& [id, label] : labels_) {
    const model::Space* space = find(id);
    if (id == active_ || !space) continue;
    const double heat = heatOf(space->uuid, false);
    if (std::exchange(label.heat, heat) != heat) tint(label);
  }
}

void SignModel::tint(Label& label) {
  const model::Palette& palette = model::heatPalette();
  const Srgb& cold = palette.cold;
  const Srgb& hot = palette.hot;
  const double t = label.heat;
  SignLook& look = label.look;
  look.fill = {mix(cold.red, hot.red, t), mix(cold.green, hot.green, t),
               mix(cold.blue, hot.blue, t), mix(cold.alpha, hot.alpha, t)};
  look.borderWidth = t > 0.05 ? std::max(4 * t, 2.0) : 0;
  look.rim = {palette.rim.red, palette.rim.green, palette.rim.blue, t};
  const double light = 0.299 * look.fill.red + 0.587 * look.fill.green + 0.114 * look.fill.blue;
  look.textColor = light > 0.6 ? Srgb{0, 0, 0, 1} : Srgb{1, 1, 1, 1};
}

}  // namespace vembrix
