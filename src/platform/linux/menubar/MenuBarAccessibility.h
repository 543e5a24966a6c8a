#pragma once

namespace vembrix {

/// Describes the status item and its menu to assistive programs: a button that the open menu
/// belongs to, and in the menu a check item for each desktop. To be called before either is shown;
/// may be called repeatedly.
void describeMenuBar();

}  // namespace vembrix
