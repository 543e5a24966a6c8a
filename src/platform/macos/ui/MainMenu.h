#pragma once

namespace vembrix {

/// Gives the application a main menu with the usual commands, unless it has one. An accessory
/// program never shows it, but AppKit looks up the key window's shortcuts there. Main thread.
void installMainMenu();

}  // namespace vembrix
