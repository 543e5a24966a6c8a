#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>

namespace vembrix {

/// Returns whether another client has sent an event that only the server should send. Client
/// messages, answers to selection requests and window managers' reports of a window's position are
/// always sent by clients and never count.
bool isForged(const xcb_generic_event_t& event);

/// While it lives, keeps two kinds of events from Qt: forged ones, and window sizes larger than any
/// screen, for whose pixels Qt would allocate gigabytes.
class ForgedEventFilter : public QAbstractNativeEventFilter {
 public:
  ForgedEventFilter();
  ~ForgedEventFilter() override;

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
};

}  // namespace vembrix
