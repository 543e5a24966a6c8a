#include "app/Launch.h"

#include "app/AppDelegate.h"
#include "app/LegacyDefaults.h"
#include "app/ThemePreviewRenderer.h"
#include "platform/Application.h"

namespace vembrix {

int runVembrix(std::span<const char* const> arguments) {
  migrateLegacyDefaultsIfNeeded();
  Application& app = Application::shared();
  app.setActivationPolicy(Application::ActivationPolicy::Accessory);
  // Done before the program shows anything on the desktop.
  if (ThemePreviewRenderer::runIfRequested(arguments)) return 0;
  // The application holds its delegate weakly, so it is held here. It is never destroyed, because
  // the program tears down nothing at its end.
  static auto* const delegate = new AppDelegate;
  app.setDelegate(delegate);
  return app.run();
}

}  // namespace vembrix
