#include "app/Launch.h"

#include "app/AppDelegate.h"
#include "app/LegacyDefaults.h"
#include "platform/Application.h"

namespace vembrix {

int runVembrix() {
  migrateLegacyDefaultsIfNeeded();
  Application& app = Application::shared();
  app.setActivationPolicy(Application::ActivationPolicy::Accessory);
  // The application holds its delegate weakly, so it is held here; it is never
  // destroyed, since nothing is torn down at the end.
  static auto* const delegate = new AppDelegate;
  app.setDelegate(delegate);
  return app.run();
}

}  // namespace vembrix
