#import "platform/macos/ui/MainMenu.h"

#import <AppKit/AppKit.h>

#import "platform/macos/support/Arc.h"
#import "platform/macos/support/EnglishText.h"

namespace vembrix {
namespace {

/// Adds an item without a target: the first object that knows the action, from the first responder
/// up to the application, handles it.
void addCommand(NSMenu* menu, NSString* title, SEL action, NSString* key) {
  [menu addItemWithTitle:title action:action keyEquivalent:key];
}

void addSubmenu(NSMenu* menu, NSMenu* submenu) {
  NSMenuItem* item = [menu addItemWithTitle:submenu.title action:nil keyEquivalent:@""];
  item.submenu = submenu;
}

NSMenu* applicationMenu() {
  auto* menu = [[NSMenu alloc] initWithTitle:NSProcessInfo.processInfo.processName];
  addCommand(menu, englishText(@"Quit"), @selector(terminate:), @"q");
  return menu;
}

NSMenu* fileMenu() {
  auto* menu = [[NSMenu alloc] initWithTitle:englishText(@"File")];
  addCommand(menu, englishText(@"Close"), @selector(performClose:), @"w");
  return menu;
}

NSMenu* editMenu() {
  auto* menu = [[NSMenu alloc] initWithTitle:englishText(@"Edit")];
  // No class declares these two actions: they are found by name in the responder chain.
  addCommand(menu, englishText(@"Undo"), NSSelectorFromString(@"undo:"), @"z");
  addCommand(menu, englishText(@"Redo"), NSSelectorFromString(@"redo:"), @"Z");
  [menu addItem:[NSMenuItem separatorItem]];
  addCommand(menu, englishText(@"Cut"), @selector(cut:), @"x");
  addCommand(menu, englishText(@"Copy"), @selector(copy:), @"c");
  addCommand(menu, englishText(@"Paste"), @selector(paste:), @"v");
  addCommand(menu, englishText(@"Select All"), @selector(selectAll:), @"a");
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
