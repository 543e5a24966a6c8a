#pragma once

namespace vembrix {

/// Gives the application a main menu with the usual commands, unless it has one. An
/// accessory program never shows it; it is where AppKit looks for the shortcuts of
/// the window that has the keyboard. Main thread.
void installMainMenu();

}  // namespace vembrix
