#pragma once

#import <AppKit/AppKit.h>

#import "platform/macos/Arc.h"

/// Stands over a row in an open menu, to be edited where the menu's window lets no field
/// of its own have the keyboard. Shows an edit field and nothing else; clicks go through
/// to the menu. Main thread.
@interface VembrixNamePanel : NSPanel

/// `field` is where it stands in a row that is `row` on the screen.
- (instancetype)initWithField:(NSTextField*)field
                          row:(NSRect)row
                        level:(NSWindowLevel)level NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithContentRect:(NSRect)rect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)flag NS_UNAVAILABLE;

@property(nonatomic, readonly) NSTextField* field;

/// Shows the panel, with the keyboard in the field.
- (void)open;
/// The panel goes and does not come back.
- (void)dismiss;

@end
