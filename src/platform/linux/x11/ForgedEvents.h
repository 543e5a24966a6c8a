#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>

namespace vembrix {

/// Returns whether another client has sent an event that only the server should. Client messages,
/// answers to selection requests and window managers' notes of a window's position are always sent
/// by clients and never count.
bool isForged(const xcb_generic_event_t& event);

/// While it lives, keeps from Qt forged events and window sizes larger than any screen, for whose
/// pixels Qt would allocate gigabytes.
class ForgedEventFilter : public QAbstractNativeEventFilter {
 public:
  ForgedEventFilter();
  ~ForgedEventFilter() override;

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
};

}  // namespace vembrix
