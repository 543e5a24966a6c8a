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

/// A black drawing on transparent ground, of which the system takes the shape
/// only and colours it to suit the menu bar.
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

/// How wide a status item is, in points; the first two as the system counts
/// them.
struct StatusItemLength {
  double points = -1;

  /// As wide as what it shows.
  static constexpr StatusItemLength variable() { return {-1}; }
  /// As wide as the menu bar is high.
  static constexpr StatusItemLength square() { return {-2}; }
  /// Wider content is clipped.
  static constexpr StatusItemLength fixed(double points) { return {points}; }

  bool operator==(const StatusItemLength&) const = default;
};

/// All that a status item shows.
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
  /// Behind the label, over the whole item; nothing for none.
  std::optional<Color> fill;
  /// Of the fill, in points.
  double cornerRadius = 0;
  StatusItemLength length;

  bool operator==(const StatusItemContent&) const = default;
};

/// Face: the program's item in the menu bar. There from creation to
/// destruction. Main thread.
class StatusItem {
 public:
  static std::unique_ptr<StatusItem> create();

  virtual ~StatusItem() = default;

  /// Whether the system gave the item a button to show things on. Without one
  /// only the length of the content counts.
  [[nodiscard]] virtual bool hasButton() const = 0;

  /// Shows the content in place of what was shown; equal content costs nothing.
  virtual void setContent(const StatusItemContent& content) = 0;

  /// Opens on a click. The item owns it; null for none.
  virtual void setMenu(std::unique_ptr<DropdownMenu> menu) = 0;
  /// Null for none. Owned by the item.
  [[nodiscard]] virtual DropdownMenu* menu() const = 0;

  /// Opens the menu as a click does, with the keyboard ready to walk through it,
  /// also where the menu bar has no room to show the item. Does nothing while the
  /// menu is open, and without a menu. The menu may open after this returns.
  virtual void openMenu() = 0;
};

}  // namespace vembrix
