#import "platform/DropdownMenu.h"

#include <utility>

#import "platform/macos/menubar/NativeDropdownMenu.h"
#import "platform/macos/menubar/NativeSpaceRowView.h"
#import "platform/macos/support/Conversions.h"

/// Forwards the calls of a menu's delegate to the menu's owner, which invalidates it before its own
/// end. The system may keep it longer.
@interface VembrixMenuDelegate : NSObject <NSMenuDelegate>
/// Called before the menu opens.
@property(nonatomic, copy) void (^needsUpdate)(void);
/// Receives nil if no item is selected.
@property(nonatomic, copy) void (^willHighlight)(NSMenuItem* item);
@property(nonatomic, readonly) BOOL isOpen;
/// The number of times that the menu has opened.
@property(nonatomic, readonly) int openings;
/// Ends all callbacks.
- (void)invalidate;
@end

@implementation VembrixMenuDelegate

- (void)invalidate {
  self.needsUpdate = nil;
  self.willHighlight = nil;
}

- (void)menuNeedsUpdate:(NSMenu*)menu {
  // The system also calls this when it looks for a key equivalent, even in an open menu, where new
  // items would remove a row that is being edited.
  if (_isOpen) return;
  // A strong reference, because the owner may be destroyed while the block runs.
  void (^needsUpdate)(void) = self.needsUpdate;
  if (needsUpdate) needsUpdate();
}

- (void)menuWillOpen:(NSMenu*)menu {
  _isOpen = YES;
  _openings += 1;
}

- (void)menuDidClose:(NSMenu*)menu {
  _isOpen = NO;
}

- (void)menu:(NSMenu*)menu willHighlightItem:(NSMenuItem*)item {
  void (^willHighlight)(NSMenuItem*) = self.willHighlight;
  if (willHighlight) willHighlight(item);
}

@end

/// The target of a command's item. Owned by the menu, because items do not retain their targets.
@interface VembrixMenuCommandTarget : NSObject
- (instancetype)initWithHandler:(std::function<void()>)handler NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;
- (void)perform:(id)sender;
@end

@implementation VembrixMenuCommandTarget {
  std::function<void()> _handler;
}

- (instancetype)initWithHandler:(std::function<void()>)handler {
  self = [super init];
  if (self) _handler = std::move(handler);
  return self;
}

- (void)perform:(id)sender {
  // A copy, because it may set new items, and this target is destroyed with the old ones.
  const std::function<void()> handler = _handler;
  if (!handler) return;
  // Not while AppKit is closing the menu: a window that is shown meanwhile is reported to leave the
  // menu's own window behind, invisible and in the way of clicks.
  [NSRunLoop.mainRunLoop performInModes:@[ NSDefaultRunLoopMode ]
                                  block:^{
                                    handler();
                                  }];
}

@end

namespace vembrix {
namespace {

/// Owns the native menu, the objects behind its items, and the delegate, which refers back to this
/// object.
class SystemDropdownMenu : public NativeDropdownMenu {
 public:
  SystemDropdownMenu() {
    delegate_.needsUpdate = ^{
      needsUpdate();
    };
    delegate_.willHighlight = ^(NSMenuItem* item) {
      willHighlight(item);
    };
    menu_.delegate = delegate_;
  }

  ~SystemDropdownMenu() override {
    [delegate_ invalidate];
    menu_.delegate = nil;
    clear();
  }

  SystemDropdownMenu(const SystemDropdownMenu&) = delete;
  SystemDropdownMenu& operator=(const SystemDropdownMenu&) = delete;

  NSMenu* nativeMenu() const override { return menu_; }
  bool isOpen() const override { return delegate_.isOpen; }
  int openings() const override { return delegate_.openings; }

  void setNeedsUpdateHandler(std::function<void()> handler) override {
    needsUpdateHandler_ = std::move(handler);
  }

  void setAppearance(std::optional<Appearance> appearance) override {
    NSAppearance* native = nativeAppearance(appearance);
    if (menu_.appearance != native) menu_.appearance = native;
  }

  void setItems(std::vector<MenuItem> items) override {
    // The event that opens a menu lasts until the menu closes, and so does its pool. With a pool of
    // its own, this function destroys the old items and rows at once.
    @autoreleasepool {
      clear();
      for (MenuItem& item : items) {
        std::visit([&](auto& kind) { [menu_ addItem:makeItem(kind)]; }, item);
      }
    }
  }

 private:
  void clear() {
    // Keeps the rows alive until their items are removed.
    const std::vector<std::unique_ptr<NativeSpaceRowView>> rows = std::exchange(rows_, {});
    [menu_ removeAllItems];
    [targets_ removeAllObjects];
  }

  static NSMenuItem* makeItem(MenuSeparator&) { return NSMenuItem.separatorItem; }

  NSMenuItem* makeItem(MenuCommand& command) {
    NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:nativeString(command.title)
                                                  action:nil
                                           keyEquivalent:nativeString(command.keyEquivalent)];
    if (command.font) {
      item.attributedTitle = [[NSAttributedString alloc]
          initWithString:item.title
              attributes:@{NSFontAttributeName : nativeFont(*command.font)}];
    }
    std::visit([&](auto& action) { setAction(item, action); }, command.action);
    return item;
  }

  NSMenuItem* makeItem(std::unique_ptr<SpaceRowView>& row) {
    // Every row comes from SpaceRowView::create().
    rows_.emplace_back(static_cast<NativeSpaceRowView*>(row.release()));
    return rows_.back()->nativeItem();
  }

  static void setAction(NSMenuItem* item, MenuCommand::Standard standard) {
    switch (standard) {
      case MenuCommand::Standard::Terminate:
        // Without a target the action reaches the application.
        item.action = @selector(terminate:);
        break;
    }
  }

  void setAction(NSMenuItem* item, std::function<void()>& handler) {
    auto* target = [[VembrixMenuCommandTarget alloc] initWithHandler:std::move(handler)];
    [targets_ addObject:target];
    item.target = target;
    item.action = @selector(perform:);
  }

  void needsUpdate() {
    // A copy, because it may set another handler, or destroy this menu.
    const std::function<void()> handler = needsUpdateHandler_;
    if (handler) handler();
  }

  void willHighlight(NSMenuItem* item) {
    for (const auto& row : rows_) row->setHighlighted(row->nativeItem() == item);
  }

  NSMenu* const menu_ = [[NSMenu alloc] initWithTitle:@""];
  VembrixMenuDelegate* const delegate_ = [[VembrixMenuDelegate alloc] init];
  NSMutableArray<VembrixMenuCommandTarget*>* const targets_ = [[NSMutableArray alloc] init];
  std::vector<std::unique_ptr<NativeSpaceRowView>> rows_;
  std::function<void()> needsUpdateHandler_;
};

}  // namespace

std::unique_ptr<DropdownMenu> DropdownMenu::create() {
  return std::make_unique<SystemDropdownMenu>();
}

}  // namespace vembrix
