#import "platform/macos/AppearanceObserver.h"

namespace {

NSString* const kKeyPath = @"effectiveAppearance";
/// Its address identifies this class's observations.
char observation;

}  // namespace

@implementation VembrixAppearanceObserver {
  NSObject<NSAppearanceCustomization>* _subject;
  void (^_handler)(void);
}

- (instancetype)initWithSubject:(NSObject<NSAppearanceCustomization>*)subject
                        handler:(void (^)(void))handler {
  self = [super init];
  if (self) {
    _subject = subject;
    _handler = [handler copy];
    [_subject addObserver:self forKeyPath:kKeyPath options:0 context:&observation];
  }
  return self;
}

- (void)dealloc {
  [self invalidate];
}

- (void)invalidate {
  [_subject removeObserver:self forKeyPath:kKeyPath context:&observation];
  _subject = nil;
  _handler = nil;
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
  if (context != &observation) {
    [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
    return;
  }
  // Strong references, because the block may invalidate the observer, or release it.
  NS_VALID_UNTIL_END_OF_SCOPE VembrixAppearanceObserver* observer = self;
  NS_VALID_UNTIL_END_OF_SCOPE void (^handler)(void) = observer->_handler;
  if (handler) handler();
}

@end
