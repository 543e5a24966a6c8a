#pragma once

#include "platform/Color.h"
#include "platform/Font.h"

namespace vembrix {

/// The fonts and colours that the pages of the settings window share.
namespace ds {

inline constexpr Font kHeaderFont{.weight = Font::Weight::Semibold, .size = 13};
inline constexpr Font kNoteFont{.size = 11};
inline constexpr Font kBodyFont{.size = 13};
/// The system's font for titles of checkboxes, popups and buttons.
inline constexpr Font kControlFont{};
inline constexpr Font kCommandFont{.design = Font::Design::Monospaced, .size = 11};

inline constexpr Color kTextColor{SystemColor::Label};
/// The colour of notes and unselected tabs. The system's own, as it is: it follows the system's
/// setting for more contrast.
inline constexpr Color kSecondaryTextColor{SystemColor::SecondaryLabel};

}  // namespace ds
}  // namespace vembrix
