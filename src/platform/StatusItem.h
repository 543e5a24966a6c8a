#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Color.h"
#include "platform/Geometry.h"

namespace vembrix {

class DropdownMenu;

/// A black drawing on a transparent background, which the system recolours to suit the menu bar.
struct TemplateImage {
  struct RoundedRect {
    Rect rect;
    double radius = 0;
    bool operator==(const RoundedRect&) const = default;
  };

  Size size;
  /// Filled, in this order; origin at the image's bottom left.
  std::vector<RoundedRect> shapes;

  bool operator==(const TemplateImage&) const = default;
};

/// The width of a status item in points; the negative values are the system's own codes.
struct StatusItemLength {
  double points = -1;

  /// As wide as the content.
  static constexpr StatusItemLength variable() { return {-1}; }
  /// As wide as the menu bar is high.
  static constexpr StatusItemLength square() { return {-2}; }
  /// Wider content is clipped.
  static constexpr StatusItemLength fixed(double points) { return {points}; }

  bool operator==(const StatusItemLength&) const = default;
};

/// The whole content of a status item.
struct StatusItemContent {
  /// In the menu bar's own font and colour.
  struct PlainTitle {
    std::string text;
    bool operator==(const PlainTitle&) const = default;
  };
  /// In the menu bar's own font, in a colour of its own.
  struct AttributedTitle {
    std::string text;
    Color color;
    bool operator==(const AttributedTitle&) const = default;
  };

  std::variant<PlainTitle, AttributedTitle, TemplateImage> label;
  /// The colour of the whole item behind the label; empty for none.
  std::optional<Color> fill;
  /// The fill's corner radius, in points.
  double cornerRadius = 0;
  StatusItemLength length;

  bool operator==(const StatusItemContent&) const = default;
};

/// Face: the program's item in the menu bar, shown for as long as the object lives. Main thread.
class StatusItem {
 public:
  static std::unique_ptr<StatusItem> create();

  virtual ~StatusItem() = default;

  /// Returns whether the system gave the item a button. Without one only the content's length has
  /// an effect.
  [[nodiscard]] virtual bool hasButton() const = 0;

  /// Shows the content; equal content costs nothing.
  virtual void setContent(const StatusItemContent& content) = 0;

  /// Sets the menu that a click opens; null for none.
  virtual void setMenu(std::unique_ptr<DropdownMenu> menu) = 0;
  /// The menu, owned by the item; null for none.
  [[nodiscard]] virtual DropdownMenu* menu() const = 0;

  /// Opens the menu as a click does, for use with the keyboard, also where the menu bar has no room
  /// for the item. Does nothing without a menu or while it is open. May return before the menu
  /// opens.
  virtual void openMenu() = 0;
};

}  // namespace vembrix
