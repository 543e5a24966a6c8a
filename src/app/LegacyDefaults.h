#pragma once

namespace vembrix {

/// Copies the settings of the product's former domain into the user defaults,
/// once per user; what the user has set since keeps its value. Main thread.
void migrateLegacyDefaultsIfNeeded();

}  // namespace vembrix
