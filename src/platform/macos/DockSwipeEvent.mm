#import "platform/DockSwipeEvent.h"

#include <ApplicationServices/ApplicationServices.h>

#include <utility>

#import "platform/macos/CFOwned.h"

namespace vembrix {
namespace {

/// Owns the native event. Posting it sends a copy: the window server keeps
/// nothing of this process's, and the event may be changed and posted again.
class SystemDockSwipeEvent : public DockSwipeEvent {
 public:
  explicit SystemDockSwipeEvent(CFOwned<CGEventRef> event) : event_(std::move(event)) {}

  void setIntegerField(int field, std::int64_t value) override {
    CGEventSetIntegerValueField(event_.get(), static_cast<CGEventField>(field), value);
  }

  void setDoubleField(int field, double value) override {
    CGEventSetDoubleValueField(event_.get(), static_cast<CGEventField>(field), value);
  }

  void post() override { CGEventPost(kCGSessionEventTap, event_.get()); }

 private:
  const CFOwned<CGEventRef> event_;
};

}  // namespace

std::unique_ptr<DockSwipeEvent> DockSwipeEvent::create() {
  auto event = CFOwned<CGEventRef>::adopt(CGEventCreate(nullptr));
  if (!event) return nullptr;
  return std::make_unique<SystemDockSwipeEvent>(std::move(event));
}

}  // namespace vembrix
