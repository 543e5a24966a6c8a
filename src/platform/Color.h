#pragma once

#include <optional>

namespace vembrix {

/// Components in the sRGB colour space, nominally 0 to 1, never clamped.
/// `alpha` is not premultiplied.
struct Srgb {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;

  bool operator==(const Srgb&) const = default;
};

/// Colours that the system defines and changes with its appearance.
enum class SystemColor {
  ControlAccent,
  Label,
  SecondaryLabel,
  TextBackground,
  Separator,
  WindowBackground,
  Link,
};

enum class Appearance { Light, Dark };

/// Returns the appearance to draw for: an unknown one counts as light.
constexpr Appearance orLight(std::optional<Appearance> appearance) {
  return appearance.value_or(Appearance::Light);
}

/// A colour as the product states it: fixed sRGB components, or a named colour
/// of the system that a face resolves when it draws, so that it follows light
/// and dark. A plain value, usable from any thread.
class Color {
 public:
  constexpr Color() = default;
  constexpr Color(Srgb components) : components_(components) {}
  /// `alpha` replaces the alpha of the system's own colour; 1 leaves it as it is.
  constexpr explicit Color(SystemColor name, double alpha = 1)
      : name_(name), components_{0, 0, 0, alpha} {}

  /// The components; empty for a colour of the system.
  [[nodiscard]] constexpr std::optional<Srgb> srgb() const {
    return name_ ? std::nullopt : std::optional(components_);
  }
  /// The name; empty for a colour of fixed components.
  [[nodiscard]] constexpr std::optional<SystemColor> systemColor() const { return name_; }
  [[nodiscard]] constexpr double alpha() const { return components_.alpha; }
  /// The same colour at another opacity.
  [[nodiscard]] constexpr Color withAlpha(double alpha) const {
    Color color = *this;
    color.components_.alpha = alpha;
    return color;
  }

  bool operator==(const Color&) const = default;

 private:
  std::optional<SystemColor> name_;
  Srgb components_;
};

/// Returns the luma of the components, from 0 to 1; alpha is ignored.
constexpr double luminance(const Srgb& color) {
  return 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue;
}

inline constexpr Srgb kBlack{0, 0, 0, 1};
inline constexpr Srgb kWhite{1, 1, 1, 1};

}  // namespace vembrix
