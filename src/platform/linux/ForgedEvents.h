#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>

namespace vembrix {

/// Whether another client has sent the event, which else only the server makes. Messages
/// between clients, answers to requests for a selection, and what window managers tell of
/// a window's place are always sent by clients, and so not meant here.
bool isForged(const xcb_generic_event_t& event);

/// Keeps from Qt what is forged, and places of windows that no screen has room for: Qt
/// would make memory for their pixels, gigabytes for a few events. While it lives.
class ForgedEventFilter : public QAbstractNativeEventFilter {
 public:
  ForgedEventFilter();
  ~ForgedEventFilter() override;

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
};

}  // namespace vembrix
