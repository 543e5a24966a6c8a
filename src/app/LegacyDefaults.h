#pragma once

namespace vembrix {

/// Copies the settings of the product's former domain into the user defaults, once per user;
/// settings that exist already keep their values. Main thread.
void migrateLegacyDefaultsIfNeeded();

}  // namespace vembrix
