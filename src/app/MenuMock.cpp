// The dropdown as a picture.

#include <iterator>
#include <utility>

#include "app/ThemePreviewRenderer.h"
#include "menubar/DropdownContent.h"
#include "platform/Application.h"
#include "settings/AppTheme.h"
#include "spaces/SpaceManager.h"

namespace vembrix {
namespace {

constexpr double kWidth = 240;
constexpr double kRowHeight = 24;
constexpr double kCornerRadius = 8;
/// The margin above the first row.
constexpr double kTopMargin = 6;
/// The height of the picture without the rows.
constexpr double kOtherHeight = 12 + 64;
/// The distance from the last row, or a command, to the origin of the next item.
constexpr double kGap = 12;
/// The distances from that origin up to the separator, and down to the command's label.
constexpr double kSeparatorRise = 5;
constexpr double kLabelDrop = 20;

void addRows(MenuMock& mock, double& y) {
  for (const SpaceInfo& space : SpaceManager::shared().desktops()) {
    y -= kRowHeight;
    mock.rows.push_back({makeSpaceRow(space), {0, y, kWidth, kRowHeight}});
  }
}

/// Adds a separator and the command below it; `y` is moved to the bottom of the label.
void addCommand(MenuMock& mock, const char* title, const Font& font, double& y) {
  constexpr double kSeparatorAlpha = 0.15;
  y -= kGap;
  const Srgb ink = mock.appearance == Appearance::Dark ? kWhite : kBlack;
  Srgb line = ink;
  line.alpha = kSeparatorAlpha;
  mock.separators.push_back({{12, y + kSeparatorRise, 216, 1}, line});
  y -= kLabelDrop;
  mock.labels.push_back({{14, y, 200, 18}, title, font, ink});
}

}  // namespace

std::optional<MenuMock> ThemePreviewRenderer::renderMenuMock(const AppTheme& theme) {
  const auto count = std::ranges::distance(SpaceManager::shared().desktops());
  if (count == 0) return std::nullopt;
  MenuMock mock;
  const std::optional<Appearance> forced = theme.appearance();
  mock.appearance = forced ? *forced : systemAppearance();
  mock.size = {kWidth, kRowHeight * static_cast<double>(count) + kOtherHeight};
  mock.background =
      mock.appearance == Appearance::Dark ? Srgb{0.17, 0.17, 0.18} : Srgb{0.95, 0.95, 0.95};
  mock.cornerRadius = kCornerRadius;
  const Font font = theme.font();
  double y = mock.size.height - kTopMargin;
  addRows(mock, y);
  addCommand(mock, "Preferences…", font, y);
  addCommand(mock, "Quit Vembrix", font, y);
  return mock;
}

}  // namespace vembrix
