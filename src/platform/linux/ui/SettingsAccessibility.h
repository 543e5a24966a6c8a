#pragma once

namespace vembrix {

/// Describes the settings window's own controls to assistive programs: sliders over real numbers,
/// tabs, colour wells. Main thread; may be called repeatedly.
void describeSettingsControls();

}  // namespace vembrix
