#include "platform/linux/session/QtMessages.h"

#include <QString>
#include <QtGlobal>
#include <cstddef>
#include <mutex>
#include <set>

#include "platform/SystemLog.h"
#include "platform/linux/x11/ProgramEnd.h"

namespace vembrix {
namespace {

/// Returns whether the message reports no problem: a limit of the offscreen platform, or the folder
/// of files that the program does not have.
bool isNoise(const QString& message) {
  return message.startsWith(QLatin1String("This plugin does not support")) ||
         message.startsWith(QLatin1String("QStandardPaths: "));
}

/// Returns whether other clients can cause the message at will and it was logged before. Each kind
/// is logged once, and only a few kinds are.
bool isRepeatedByOthers(const QString& message) {
  constexpr std::size_t kMostKinds = 30;
  constexpr const char* kAtoms = "atomName: bad atom";
  static std::mutex mutex;
  static auto& kinds = *new std::set<QString>;
  const bool isAtom = message.startsWith(QLatin1String(kAtoms));
  if (!isAtom && !message.startsWith(QLatin1String("Unhandled client message"))) return false;
  const std::lock_guard lock(mutex);
  if (kinds.size() == kMostKinds) return true;
  return !kinds.insert(isAtom ? QString::fromLatin1(kAtoms) : message).second;
}

void handle(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
  // These are for Qt's developers.
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  if (isNoise(message) || isRepeatedByOthers(message)) return;
  // After this message Qt calls exit(), whose handlers would use the server.
  if (message.startsWith(QLatin1String("The X11 connection broke"))) {
    endProgram("the X server went away");
  }
  logLine("Qt: " + message.toStdString());
}

}  // namespace

void handleQtMessages() {
  qInstallMessageHandler(handle);
}

}  // namespace vembrix
