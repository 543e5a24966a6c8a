#include "platform/linux/QtMessages.h"

#include <QString>
#include <QtGlobal>

#include "platform/SystemLog.h"
#include "platform/linux/ProgramEnd.h"

namespace vembrix {
namespace {

/// What Qt reports though nothing is amiss: that the platform without a screen
/// cannot do this or that with windows, and where Qt puts files that the program
/// does not have.
bool isNoise(const QString& message) {
  return message.startsWith(QLatin1String("This plugin does not support")) ||
         message.startsWith(QLatin1String("QStandardPaths: "));
}

void handle(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
  // Meant for Qt's developers.
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  if (isNoise(message)) return;
  // Qt says this and then runs exit(), whose handlers would reach for the server.
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
