#pragma once

namespace vembrix {

/// Lets assistive programs know the settings window's own controls for what they
/// are: sliders over real numbers, tabs, colour wells. Main thread; any number of
/// times.
void describeSettingsControls();

}  // namespace vembrix
