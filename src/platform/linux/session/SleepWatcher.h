#pragma once

#include <QObject>

namespace vembrix {

/// Posts notification::kDidWake on the workspace center when the login manager reports that the
/// machine wakes from sleep. Main thread.
class SleepWatcher : public QObject {
  Q_OBJECT

 public:
  SleepWatcher();

 private:
  Q_SLOT void prepareForSleep(bool isGoingToSleep);
};

}  // namespace vembrix
