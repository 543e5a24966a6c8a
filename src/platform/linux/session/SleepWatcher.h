#pragma once

#include <QObject>

namespace vembrix {

/// Posts notification::kDidWake on the workspace center when the machine wakes from sleep, as the
/// login manager reports it; never without one. Main thread.
class SleepWatcher : public QObject {
  Q_OBJECT

 public:
  SleepWatcher();

 private:
  Q_SLOT void prepareForSleep(bool isGoingToSleep);
};

}  // namespace vembrix
