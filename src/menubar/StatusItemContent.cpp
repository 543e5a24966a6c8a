// The content of the status item.

#include "menubar/ColorLegibility.h"
#include "menubar/MenuBarController.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

/// Shown while the active Space is unknown.
constexpr const char* kNoSpaceTitle = "Desktops";
constexpr double kFillRadius = 3.0;
constexpr double kMaxTitleLength = 140.0;

constexpr double kIconSize = 16;
constexpr double kIconSquare = 7.25;
constexpr double kIconSquareRadius = 2.0;
constexpr double kIconFarEdge = kIconSize - kIconSquare;

void showName(StatusItemContent& content, const SpaceInfo& space) {
  const PreferencesStore& store = PreferencesStore::shared();
  const SpaceColorConfig colors = store.colorConfig(space.uuid);
  StatusItemContent::AttributedTitle title;
  title.text.append(" ").append(SpaceManager::shared().displayName(space)).append(" ");
  if (store.colorMode() == ColorMode::ColorForeground) {
    title.color = adjustedForeground(colors.foreground.srgb());
  } else {
    content.fill = colors.background.srgb();
    content.cornerRadius = kFillRadius;
    title.color = contrastingColor(*content.fill);
  }
  content.label = std::move(title);
}

}  // namespace

StatusItemContent statusItemContent(bool hasButton) {
  const PreferencesStore& store = PreferencesStore::shared();
  StatusItemContent content;
  if (hasButton && !store.showSpaceNameInMenuBar()) {
    content.label = makeIconImage();
    content.length = StatusItemLength::square();
    return content;
  }
  if (hasButton) {
    if (const SpaceInfo* space = SpaceManager::shared().activeSpace()) {
      showName(content, *space);
    } else {
      content.label = StatusItemContent::PlainTitle{kNoSpaceTitle};
    }
  }
  content.length = store.menuBarWidthMode() == MenuBarWidthMode::MaxTitleLength
                       ? StatusItemLength::fixed(kMaxTitleLength)
                       : StatusItemLength::variable();
  return content;
}

const TemplateImage& makeIconImage() {
  static const auto square = [](double x, double y) {
    return TemplateImage::RoundedRect{{x, y, kIconSquare, kIconSquare}, kIconSquareRadius};
  };
  static const TemplateImage image{{kIconSize, kIconSize},
                                   {square(0, kIconFarEdge), square(kIconFarEdge, kIconFarEdge),
                                    square(0, 0), square(kIconFarEdge, 0)}};
  return image;
}

}  // namespace vembrix
