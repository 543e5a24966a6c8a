#pragma once

class QObject;

namespace vembrix {

/// To be called for every event that Qt's application delivers, before its receiver gets it. The
/// main queue's polls rest while there are no events. Main thread.
void noteLoopEvent(const QObject* receiver);

}  // namespace vembrix
