#include "BenchSession.h"

#include <QTemporaryDir>

#include "platform/Application.h"

namespace vembrix {

void useBenchSession() {
  static const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
  qputenv("VEMBRIX_DESKTOP", "embedded");
  Application::shared();
}

}  // namespace vembrix
