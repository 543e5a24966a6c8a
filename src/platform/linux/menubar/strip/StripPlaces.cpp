#include "platform/linux/menubar/strip/StripPlaces.h"

#include <cstdint>
#include <utility>

#include "platform/PropertyList.h"
#include "platform/UserDefaults.h"

namespace vembrix {
namespace {

using Edge = StripPlace::Edge;
using Side = StripPlace::Side;

/// A dictionary from layouts to places. No other platform has this key.
constexpr std::string_view kPlaces = "LinuxStatusItemPlaces";

constexpr std::string_view kMonitor = "Monitor";
constexpr std::string_view kEdge = "Edge";
constexpr std::string_view kSide = "Side";
constexpr std::string_view kOffset = "Offset";
constexpr std::string_view kOnPanel = "OnPanel";
constexpr std::string_view kTop = "top";
constexpr std::string_view kBottom = "bottom";
constexpr std::string_view kLeft = "left";
constexpr std::string_view kRight = "right";

/// Larger than any screen or number of monitors.
constexpr std::int64_t kMaxNumber = 0x7FFF;

std::optional<int> smallNumber(const PropertyList& value) {
  const auto number = value.integer();
  if (!number || *number < 0 || *number > kMaxNumber) return std::nullopt;
  return static_cast<int>(*number);
}

/// Returns the choice for one of the two words.
template <typename Choice>
std::optional<Choice> choice(const PropertyList& value, std::string_view firstWord, Choice first,
                             std::string_view secondWord, Choice second) {
  const std::string* word = value.asString();
  if (word && *word == firstWord) return first;
  if (word && *word == secondWord) return second;
  return std::nullopt;
}

std::string signedNumber(int number) {
  return (number < 0 ? "" : "+") + std::to_string(number);
}

}  // namespace

std::string monitorLayout(const std::vector<QRect>& monitors) {
  std::string layout;
  for (const QRect& monitor : monitors) {
    if (!layout.empty()) layout += ' ';
    layout += std::to_string(monitor.width()) + "x" + std::to_string(monitor.height()) +
              signedNumber(monitor.x()) + signedNumber(monitor.y());
  }
  return layout;
}

std::optional<StripPlace> storedStripPlace(std::string_view layout) {
  const PropertyList stored = UserDefaults::standard().object(kPlaces)[layout];
  const auto monitor = smallNumber(stored[kMonitor]);
  const auto offset = smallNumber(stored[kOffset]);
  const auto edge = choice(stored[kEdge], kTop, Edge::Top, kBottom, Edge::Bottom);
  const auto side = choice(stored[kSide], kLeft, Side::Left, kRight, Side::Right);
  const auto isOnPanel = stored[kOnPanel].boolean();
  if (!monitor || !offset || !edge || !side || !isOnPanel) return std::nullopt;
  return StripPlace{static_cast<std::size_t>(*monitor), *edge, *side, *offset, *isOnPanel};
}

void storeStripPlace(std::string_view layout, const std::optional<StripPlace>& place) {
  UserDefaults& defaults = UserDefaults::standard();
  const PropertyList stored = defaults.object(kPlaces);
  const PropertyList::Dictionary* known = stored.asDictionary();
  PropertyList::Dictionary places = known ? *known : PropertyList::Dictionary();
  if (place) {
    places.insert_or_assign(
        std::string(layout),
        PropertyList::Dictionary{
            {std::string(kMonitor), static_cast<std::int64_t>(place->monitor)},
            {std::string(kEdge), std::string(place->edge == Edge::Top ? kTop : kBottom)},
            {std::string(kSide), std::string(place->side == Side::Left ? kLeft : kRight)},
            {std::string(kOffset), place->offset},
            {std::string(kOnPanel), place->isOnPanel}});
  } else if (places.erase(std::string(layout)) == 0) {
    return;
  }
  defaults.set(kPlaces, places.empty() ? PropertyList() : PropertyList(std::move(places)));
}

}  // namespace vembrix
