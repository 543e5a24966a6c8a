// A run of Vembrix that ends before its first picture, with settings and Spaces read and
// fonts loaded.

#include <QFontMetricsF>

#include "app/LegacyDefaults.h"
#include "platform/Application.h"
#include "platform/linux/Conversions.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"

int main() {
  using namespace vembrix;
  migrateLegacyDefaultsIfNeeded();
  Application::shared().setActivationPolicy(Application::ActivationPolicy::Accessory);
  SpaceManager::shared().reload();
  double width = 0;
  for (const auto design : {Font::Design::System, Font::Design::Monospaced}) {
    for (const auto weight : {Font::Weight::Regular, Font::Weight::Semibold}) {
      const QFontMetricsF metrics(nativeFont({.design = design, .weight = weight, .size = {}}));
      width += metrics.horizontalAdvance(QStringLiteral("Desktop 1"));
    }
  }
  return width > 0 && !PreferencesStore::shared().themeName().empty() ? 0 : 1;
}
