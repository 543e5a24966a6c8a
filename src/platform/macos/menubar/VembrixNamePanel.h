#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/support/Arc.h"

/// A panel over a row in an open menu, with only an edit field, for a menu whose window gives its
/// own fields no keyboard. Lets clicks through to the menu. Main thread.
@interface VembrixNamePanel : NSPanel

/// `field` is the edit field's frame in the row, `row` the row's frame on the screen.
- (instancetype)initWithField:(NSTextField*)field
                          row:(NSRect)row
                        level:(NSWindowLevel)level NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithContentRect:(NSRect)rect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)flag NS_UNAVAILABLE;

@property(nonatomic, readonly) NSTextField* field;

/// Shows the panel and gives its field the keyboard.
- (void)open;
/// Closes the panel for good.
- (void)dismiss;

@end
