#pragma once

#include "platform/Color.h"
#include "platform/Font.h"

namespace vembrix {

/// The fonts and colours that the pages of the settings window share.
namespace ds {

inline constexpr Font kHeaderFont{.weight = Font::Weight::Semibold, .size = 13};
inline constexpr Font kNoteFont{.size = 11};
inline constexpr Font kBodyFont{.size = 13};
/// The titles of checkboxes, popups and buttons, as the system has them.
inline constexpr Font kControlFont{};
inline constexpr Font kCommandFont{.design = Font::Design::Monospaced, .size = 11};

inline constexpr Color kTextColor{SystemColor::Label};
/// Of notes and of tabs that are not selected. The system's own secondary label
/// colour is too faint to read in small type (less than 4.5 : 1 on white), so it
/// is drawn stronger.
inline constexpr Color kSecondaryTextColor{SystemColor::SecondaryLabel, 0.6};

}  // namespace ds
}  // namespace vembrix
