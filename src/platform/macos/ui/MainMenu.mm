#import "platform/macos/ui/MainMenu.h"

#import <AppKit/AppKit.h>

#import "platform/macos/Arc.h"

namespace vembrix {
namespace {

/// The item has no target: the first object that knows the action, from the first
/// responder up to the application, takes it.
void addCommand(NSMenu* menu, NSString* title, SEL action, NSString* key) {
  [menu addItemWithTitle:title action:action keyEquivalent:key];
}

void addSubmenu(NSMenu* menu, NSMenu* submenu) {
  NSMenuItem* item = [menu addItemWithTitle:submenu.title action:nil keyEquivalent:@""];
  item.submenu = submenu;
}

NSMenu* applicationMenu() {
  auto* menu = [[NSMenu alloc] initWithTitle:NSProcessInfo.processInfo.processName];
  addCommand(menu, @"Quit", @selector(terminate:), @"q");
  return menu;
}

NSMenu* fileMenu() {
  auto* menu = [[NSMenu alloc] initWithTitle:@"File"];
  addCommand(menu, @"Close", @selector(performClose:), @"w");
  return menu;
}

NSMenu* editMenu() {
  auto* menu = [[NSMenu alloc] initWithTitle:@"Edit"];
  // No class declares these two: they are found by name along the responders.
  addCommand(menu, @"Undo", NSSelectorFromString(@"undo:"), @"z");
  addCommand(menu, @"Redo", NSSelectorFromString(@"redo:"), @"Z");
  [menu addItem:[NSMenuItem separatorItem]];
  addCommand(menu, @"Cut", @selector(cut:), @"x");
  addCommand(menu, @"Copy", @selector(copy:), @"c");
  addCommand(menu, @"Paste", @selector(paste:), @"v");
  addCommand(menu, @"Select All", @selector(selectAll:), @"a");
  return menu;
}

}  // namespace

void installMainMenu() {
  NSApplication* application = NSApplication.sharedApplication;
  if (application.mainMenu) return;
  auto* menu = [[NSMenu alloc] initWithTitle:@""];
  addSubmenu(menu, applicationMenu());
  addSubmenu(menu, fileMenu());
  addSubmenu(menu, editMenu());
  application.mainMenu = menu;
}

}  // namespace vembrix
