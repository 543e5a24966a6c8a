#pragma once

#include "platform/Color.h"
#include "platform/Font.h"

namespace vembrix {

/// The design system of the settings window: the fonts and colours that its pages share.
namespace ds {

inline constexpr Font kHeaderFont{.weight = Font::Weight::Semibold, .size = 13};
inline constexpr Font kNoteFont{.size = 11};
inline constexpr Font kBodyFont{.size = 13};
/// The system's font for titles of checkboxes, popups and buttons.
inline constexpr Font kControlFont{};
inline constexpr Font kCommandFont{.design = Font::Design::Monospaced, .size = 11};

inline constexpr Color kTextColor{SystemColor::Label};
/// The system's colour for notes and unselected tabs. Unmodified, so that it follows the system's
/// setting for more contrast.
inline constexpr Color kSecondaryTextColor{SystemColor::SecondaryLabel};

}  // namespace ds
}  // namespace vembrix
