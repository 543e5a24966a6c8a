#import "platform/macos/ui/ControlTarget.h"

@implementation VembrixControlTarget {
  void (^_handler)(NSControl*);
}

- (instancetype)initWithHandler:(void (^)(NSControl*))handler {
  self = [super init];
  if (self) _handler = [handler copy];
  return self;
}

- (void)controlDidAct:(NSControl*)sender {
  NS_VALID_UNTIL_END_OF_SCOPE VembrixControlTarget* target = self;
  NS_VALID_UNTIL_END_OF_SCOPE NSControl* control = sender;
  NS_VALID_UNTIL_END_OF_SCOPE void (^handler)(NSControl*) = target->_handler;
  if (handler) handler(control);
}

- (void)invalidate {
  _handler = nil;
}

@end

namespace vembrix {

void setTarget(NSControl* control, VembrixControlTarget* target) {
  control.target = target;
  control.action = @selector(controlDidAct:);
}

void keepUntilEventEnds(NSArray* objects) {
  // Not the main queue, which also runs while a control tracks the mouse.
  [NSRunLoop.mainRunLoop performInModes:@[ NSDefaultRunLoopMode ]
                                  block:^{
                                    (void)objects;
                                  }];
}

}  // namespace vembrix
