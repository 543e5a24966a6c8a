#include "platform/embedded/desktop/EmbeddedDesktop.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/NotificationCenter.h"

namespace vembrix {

// The desktop's services, one for each header of the seam.

class EmbeddedDesktop::AccessibilityService : public Accessibility {
 public:
  explicit AccessibilityService(EmbeddedDesktop& desktop) : desktop_(desktop) {}

  bool isProcessTrusted(Prompt prompt) override {
    if (!desktop_.trusted_ && prompt == Prompt::Yes) desktop_.promptCount_ += 1;
    return desktop_.trusted_;
  }

 private:
  EmbeddedDesktop& desktop_;
};

class EmbeddedDesktop::ScreensService : public Screens {
 public:
  explicit ScreensService(EmbeddedDesktop& desktop) : desktop_(desktop) {}

  const std::vector<Screen>& all() const override { return desktop_.screenList_; }
  const Screen* mainScreen() const override {
    const auto& list = desktop_.screenList_;
    return desktop_.activeDisplay_ < list.size() ? &list[desktop_.activeDisplay_] : nullptr;
  }

 private:
  EmbeddedDesktop& desktop_;
};

class EmbeddedDesktop::SpaceNamingService : public SpaceNaming {
 public:
  explicit SpaceNamingService(EmbeddedDesktop& desktop) : desktop_(desktop) {}

  void setHandlers(Handlers handlers) override { desktop_.nameHandlers_ = std::move(handlers); }
  std::string_view ownName(SpaceID space) const override {
    const auto found = desktop_.ownNames_.find(space);
    return found == desktop_.ownNames_.end() ? std::string_view() : found->second;
  }
  void setName(SpaceID space, std::string_view name) override { desktop_.publishName(space, name); }
  void clearName(SpaceID space, std::string_view fallback) override {
    const std::string_view own = ownName(space);
    desktop_.publishName(space, own.empty() ? fallback : own);
  }

 private:
  EmbeddedDesktop& desktop_;
};

class EmbeddedDesktop::WindowServerService : public WindowServer {
 public:
  explicit WindowServerService(EmbeddedDesktop& desktop) : desktop_(desktop) {}

  ConnectionID CGSMainConnectionID() override { return 1; }
  PropertyList CGSCopyManagedDisplaySpaces(ConnectionID) override {
    return desktop_.managedDisplaySpaces();
  }
  SpaceID CGSGetActiveSpace(ConnectionID) override { return desktop_.activeSpace(); }
  void CGSManagedDisplaySetCurrentSpace(ConnectionID, std::string_view display,
                                        SpaceID space) override {
    desktop_.switchDisplayTo(display, space);
  }
  bool canPlaceWindows() const override { return true; }

  void CGSAddWindowsToSpaces(ConnectionID, std::span<const WindowNumber> windows,
                             std::span<const SpaceID> spaces) override {
    desktop_.windows_.addToSpaces(windows, known(spaces));
  }
  void CGSRemoveWindowsFromSpaces(ConnectionID, std::span<const WindowNumber> windows,
                                  std::span<const SpaceID> spaces) override {
    desktop_.windows_.removeFromSpaces(windows, spaces);
  }
  PropertyList CGSCopySpacesForWindows(ConnectionID, std::uint32_t,
                                       std::span<const WindowNumber> windows) override {
    PropertyList::Array answer;
    for (const SpaceID space : desktop_.windows_.spacesOf(windows, desktop_.spaceIDs())) {
      answer.emplace_back(static_cast<std::int64_t>(space));
    }
    return answer;
  }
  PropertyList CGWindowListCopyWindowInfo(std::uint32_t) override { return desktop_.windowList(); }

 private:
  [[nodiscard]] std::vector<SpaceID> known(std::span<const SpaceID> spaces) const {
    std::vector<SpaceID> known;
    std::ranges::copy_if(spaces, std::back_inserter(known),
                         [&](SpaceID space) { return desktop_.isKnown(space); });
    return known;
  }

  EmbeddedDesktop& desktop_;
};

EmbeddedDesktop::EmbeddedDesktop()
    : dock_([this](ISSDirection direction, Dock::Arrival arrival) {
        swipeCompleted(direction, arrival);
      }),
      events_([this](const GestureEvent& event) { dock_.handle(event); }),
      accessibility_(std::make_unique<AccessibilityService>(*this)),
      screens_(std::make_unique<ScreensService>(*this)),
      spaceNaming_(std::make_unique<SpaceNamingService>(*this)),
      windowServer_(std::make_unique<WindowServerService>(*this)) {
  dock_.onBegin([this] { endTransition(); });
  input_.setKeysTold([this] { return trusted_; });
  addDisplay({.identifier = "Main", .frame = {0, 0, 1440, 900}});
  setSpaceCount(4);
}

EmbeddedDesktop::~EmbeddedDesktop() = default;

Accessibility& EmbeddedDesktop::accessibility() {
  return *accessibility_;
}
const Screens& EmbeddedDesktop::screens() {
  return *screens_;
}
SpaceNaming& EmbeddedDesktop::spaceNaming() {
  return *spaceNaming_;
}
WindowServer& EmbeddedDesktop::windowServer() {
  return *windowServer_;
}

// Displays

void EmbeddedDesktop::addDisplay(Display display) {
  const SpaceID formerActive = activeSpace();
  Space space = makeSpace(SpaceType::Desktop, {});
  const SpaceID current = space.id;
  displays_.push_back({std::move(display), {std::move(space)}, current});
  displaysChanged();
  spacesChanged(formerActive);
}

void EmbeddedDesktop::removeDisplay(std::string_view identifier) {
  const DisplayState* state = findDisplay(identifier);
  if (!state) return;
  const SpaceID formerActive = activeSpace();
  const auto index = static_cast<std::size_t>(state - displays_.data());
  displays_.erase(displays_.begin() + static_cast<std::ptrdiff_t>(index));
  if (activeDisplay_ == index) {
    activeDisplay_ = 0;
  } else if (activeDisplay_ > index) {
    activeDisplay_ -= 1;
  }
  rehouseWindows(activeSpace());
  displaysChanged();
  spacesChanged(formerActive);
}

void EmbeddedDesktop::setDisplayFrame(std::string_view identifier, const Rect& frame) {
  DisplayState* state = findDisplay(identifier);
  if (!state || state->display.frame == frame) return;
  state->display.frame = frame;
  displaysChanged();
}

void EmbeddedDesktop::displaysChanged() {
  screenList_.clear();
  for (const DisplayState& state : displays_) {
    const Display& display = state.display;
    Rect visible = display.frame;
    visible.height -= std::min(visible.height, display.menuBarHeight);
    screenList_.push_back({display.frame, visible, display.scale});
  }
  NotificationCenter::defaultCenter().post(notification::kScreenParametersDidChange);
}

// Spaces

EmbeddedDesktop::Space EmbeddedDesktop::makeSpace(SpaceType type, std::string uuid) {
  const SpaceID id = nextSpaceID_++;
  if (uuid.empty()) uuid = "embedded-space-" + std::to_string(id);
  return {id, std::move(uuid), type};
}

EmbeddedDesktop::SpaceID EmbeddedDesktop::addSpace(std::string_view display, SpaceType type,
                                                   std::string uuid) {
  DisplayState* state = findDisplay(display);
  if (!state) return 0;
  const SpaceID formerActive = activeSpace();
  state->spaces.push_back(makeSpace(type, std::move(uuid)));
  const SpaceID id = state->spaces.back().id;
  repairCurrent(*state, 0);
  spacesChanged(formerActive);
  return id;
}

void EmbeddedDesktop::removeSpace(SpaceID space) {
  DisplayState* state = displayOf(space);
  if (!state || state->spaces.size() == 1) return;
  const SpaceID formerActive = activeSpace();
  const auto found = std::ranges::find(state->spaces, space, &Space::id);
  const auto index = static_cast<std::size_t>(found - state->spaces.begin());
  state->spaces.erase(found);
  repairCurrent(*state, index);
  rehouseWindows(state->current);
  spacesChanged(formerActive);
}

void EmbeddedDesktop::moveSpace(SpaceID space, std::size_t position) {
  DisplayState* state = displayOf(space);
  if (!state) return;
  auto& list = state->spaces;
  const auto found = std::ranges::find(list, space, &Space::id);
  Space moved = std::move(*found);
  list.erase(found);
  position = std::min(position, list.size());
  list.insert(list.begin() + static_cast<std::ptrdiff_t>(position), std::move(moved));
  spacesChanged(activeSpace());
}

void EmbeddedDesktop::setSpaceCount(std::size_t count) {
  if (displays_.empty()) return;
  DisplayState& state = displays_.front();
  const SpaceID formerActive = activeSpace();
  while (state.spaces.size() > count) state.spaces.pop_back();
  while (state.spaces.size() < count) {
    state.spaces.push_back(makeSpace(SpaceType::Desktop, {}));
  }
  repairCurrent(state, count);
  rehouseWindows(state.current);
  spacesChanged(formerActive);
}

void EmbeddedDesktop::rehouseWindows(SpaceID refuge) {
  windows_.removeSpaces([this](SpaceID space) { return !isKnown(space); }, refuge);
}

void EmbeddedDesktop::repairCurrent(DisplayState& state, std::size_t formerIndex) {
  if (std::ranges::find(state.spaces, state.current, &Space::id) != state.spaces.end()) return;
  if (state.spaces.empty()) {
    state.current = 0;
    return;
  }
  // The left neighbour becomes current, as on the real system.
  const std::size_t index = formerIndex == 0 ? 0 : formerIndex - 1;
  state.current = state.spaces[std::min(index, state.spaces.size() - 1)].id;
}

void EmbeddedDesktop::spacesChanged(SpaceID formerActive) {
  answer_ = {};
  if (announcesSpaces_ || activeSpace() != formerActive) {
    NotificationCenter::workspace().post(notification::kActiveSpaceDidChange);
  }
}

void EmbeddedDesktop::activate(SpaceID space) {
  DisplayState* state = displayOf(space);
  if (!state || space == activeSpace()) return;
  state->current = space;
  activeDisplay_ = static_cast<std::size_t>(state - displays_.data());
  NotificationCenter::workspace().post(notification::kActiveSpaceDidChange);
}

void EmbeddedDesktop::switchDisplayTo(std::string_view display, SpaceID space) {
  DisplayState* state = findDisplay(display);
  if (!state || displayOf(space) != state || state->current == space) return;
  state->current = space;
  NotificationCenter::workspace().post(notification::kActiveSpaceDidChange);
}

EmbeddedDesktop::SpaceID EmbeddedDesktop::activeSpace() const {
  return activeDisplay_ < displays_.size() ? displays_[activeDisplay_].current : 0;
}

std::vector<EmbeddedDesktop::SpaceID> EmbeddedDesktop::spaceIDs() const {
  std::vector<SpaceID> ids;
  for (const DisplayState& state : displays_) {
    for (const Space& space : state.spaces) ids.push_back(space.id);
  }
  return ids;
}

std::vector<EmbeddedDesktop::SpaceID> EmbeddedDesktop::currentSpaces() const {
  std::vector<SpaceID> ids;
  for (const DisplayState& state : displays_) ids.push_back(state.current);
  return ids;
}

bool EmbeddedDesktop::isKnown(SpaceID space) const {
  return std::ranges::any_of(displays_, [&](const DisplayState& state) {
    return std::ranges::find(state.spaces, space, &Space::id) != state.spaces.end();
  });
}

EmbeddedDesktop::SpaceID EmbeddedDesktop::spaceAt(std::size_t position) const {
  return displays_.at(0).spaces.at(position).id;
}

EmbeddedDesktop::DisplayState* EmbeddedDesktop::findDisplay(std::string_view identifier) {
  const auto found = std::ranges::find_if(
      displays_, [&](const DisplayState& state) { return state.display.identifier == identifier; });
  return found == displays_.end() ? nullptr : &*found;
}

EmbeddedDesktop::DisplayState* EmbeddedDesktop::displayOf(SpaceID space) {
  const auto found = std::ranges::find_if(displays_, [&](const DisplayState& state) {
    return std::ranges::find(state.spaces, space, &Space::id) != state.spaces.end();
  });
  return found == displays_.end() ? nullptr : &*found;
}

// Answers

const PropertyList& EmbeddedDesktop::managedDisplaySpaces() {
  if (!answer_.isNull()) return answer_;
  PropertyList::Array displays;
  for (const DisplayState& state : displays_) {
    PropertyList::Array spaces;
    for (const Space& space : state.spaces) {
      const auto id = static_cast<std::int64_t>(space.id);
      spaces.emplace_back(PropertyList::Dictionary{{"ManagedSpaceID", id},
                                                   {"id64", id},
                                                   {"type", static_cast<std::int64_t>(space.type)},
                                                   {"uuid", space.uuid}});
    }
    displays.emplace_back(PropertyList::Dictionary{{"Display Identifier", state.display.identifier},
                                                   {"Spaces", std::move(spaces)}});
  }
  answer_ = PropertyList(std::move(displays));
  return answer_;
}

// The system around the Spaces

void EmbeddedDesktop::setAppearance(std::optional<Appearance> appearance) {
  if (appearance_ == appearance) return;
  appearance_ = appearance;
  NotificationCenter::distributed().post(notification::kInterfaceThemeChanged);
}

void EmbeddedDesktop::wake() {
  NotificationCenter::workspace().post(notification::kDidWake);
}

void EmbeddedDesktop::publishName(SpaceID space, std::string_view name) {
  if (!displayOf(space)) return;
  std::string& published = publishedNames_[space];
  if (published == name) return;
  published = name;
  publishCount_ += 1;
}

void EmbeddedDesktop::setOwnName(SpaceID space, std::string_view name) {
  ownNames_.insert_or_assign(space, std::string(name));
  publishedNames_.erase(space);
  if (nameHandlers_.ownNamesChanged) nameHandlers_.ownNamesChanged();
}

void EmbeddedDesktop::renameElsewhere(SpaceID space, std::string_view name) {
  publishedNames_.insert_or_assign(space, std::string(name));
  if (nameHandlers_.renamed) nameHandlers_.renamed(space, name);
}

std::string EmbeddedDesktop::publishedName(SpaceID space) const {
  const auto found = publishedNames_.find(space);
  return found == publishedNames_.end() ? std::string() : found->second;
}

}  // namespace vembrix
