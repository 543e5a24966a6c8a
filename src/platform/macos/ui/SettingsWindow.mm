#import "platform/SettingsWindow.h"

#include <utility>

#import "platform/macos/support/Conversions.h"
#import "platform/macos/ui/FormPage.h"
#import "platform/macos/ui/MainMenu.h"
#import "platform/macos/ui/NativeSettingsWindow.h"
#import "platform/macos/ui/ThemedView.h"
#import "platform/macos/ui/VembrixSettingsWindow.h"

namespace vembrix {
namespace {

void applyChrome(const WindowChrome& chrome, NSWindow* window) {
  window.appearance = nativeAppearance(chrome.appearance);
  NSWindowStyleMask style = window.styleMask & ~NSWindowStyleMaskFullSizeContentView;
  if (chrome.hasFullSizeContent) style |= NSWindowStyleMaskFullSizeContentView;
  window.styleMask = style;
  window.titlebarAppearsTransparent = chrome.hasTransparentTitleBar;
  window.titleVisibility = chrome.showsTitle ? NSWindowTitleVisible : NSWindowTitleHidden;
  window.backgroundColor = nativeColor(chrome.background);
  // Otherwise the window server does not draw what is behind the window.
  window.opaque = chrome.background.alpha() >= 1;
}

NSTabViewItem* makeTabItem(const SettingsTab& tab, NSView* view) {
  auto* item = [[NSTabViewItem alloc] initWithIdentifier:nativeString(tab.identifier)];
  item.label = nativeString(tab.label);
  item.view = view;
  return item;
}

/// Owns the native window and its content. The window's block and the buttons of a themed view
/// refer back to this object; the block is cleared and the view destroyed before it. A control's
/// closure may replace the content, or destroy this object, so nothing is used here after such a
/// call.
class SystemSettingsWindow : public NativeSettingsWindow {
 public:
  SystemSettingsWindow(Size contentSize, std::string_view title)
      : window_([[VembrixSettingsWindow alloc] initWithContentSize:nativeSize(contentSize)
                                                             title:nativeString(title)]) {
    // Closed with the window: the panel would stay without a well that takes its colours, and the
    // program has no menu to close it.
    window_.closeHandler = ^{
      for (const auto& page : pages_) page->deactivateWells();
    };
  }

  ~SystemSettingsWindow() override {
    window_.closeHandler = nil;
    [window_ close];
    window_.contentView = [[NSView alloc] initWithFrame:NSZeroRect];
    keepUntilEventEnds(@[ window_ ]);
  }

  SystemSettingsWindow(const SystemSettingsWindow&) = delete;
  SystemSettingsWindow& operator=(const SystemSettingsWindow&) = delete;

  NSWindow* nativeWindow() const override { return window_; }

  void setTabClickHandler(std::function<void(int)> handler) override {
    tabClicked_ = std::move(handler);
  }

  void setContent(SettingsContent content) override {
    @autoreleasepool {
      // Releases the field editor, which may be in a text of the old content.
      [window_ makeFirstResponder:nil];
      applyChrome(content.chrome, window_);
      std::visit([this](const auto& body) { showBody(body); }, content.body);
    }
  }

  void setPage(ThemedPage page) override {
    if (!themed_) return;
    @autoreleasepool {
      showPage(page);
    }
  }

  void setStatus(const ControlID& id, std::string_view text) override {
    NSString* name = nativeString(id);
    for (const auto& page : pages_) {
      if (page->setStatus(name, text)) return;
    }
  }

  void setEnabled(const ControlID& id, bool isEnabled) override {
    NSString* name = nativeString(id);
    for (const auto& page : pages_) page->setEnabled(name, isEnabled);
  }

  void show() override { [window_ makeKeyAndOrderFront:nil]; }

 private:
  using Pages = std::vector<std::unique_ptr<FormPage>>;

  void showBody(const PlainContent& content) {
    auto* root =
        [[NSView alloc] initWithFrame:NSMakeRect(0, 0, content.size.width, content.size.height)];
    auto* tabs =
        [[NSTabView alloc] initWithFrame:NSInsetRect(root.bounds, content.inset, content.inset)];
    tabs.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    Pages pages;
    for (const SettingsTab& tab : content.tabs) {
      pages.push_back(std::make_unique<FormPage>(tab.form));
      [tabs addTabViewItem:makeTabItem(tab, pages.back()->view())];
    }
    if (content.selected < content.tabs.size()) {
      [tabs selectTabViewItemAtIndex:static_cast<NSInteger>(content.selected)];
    }
    [root addSubview:tabs];
    window_.contentView = root;
    themed_ = nullptr;
    pages_ = std::move(pages);
  }

  void showBody(const ThemedContent& content) {
    auto themed = std::make_unique<ThemedView>(content, [this](int index) {
      if (const auto handler = tabClicked_) handler(index);
    });
    window_.contentView = themed->root();
    themed_ = std::move(themed);
    showPage(content.page);
  }

  void showPage(const ThemedPage& content) {
    auto page = std::make_unique<FormPage>(content.tab.form);
    themed_->show(page->view(), content.buttons);
    pages_.clear();
    pages_.push_back(std::move(page));
  }

  VembrixSettingsWindow* const window_;
  std::function<void(int)> tabClicked_;
  /// Null while the system's own tab view is shown.
  std::unique_ptr<ThemedView> themed_;
  /// The pages that are shown: those of all plain tabs, or the themed one.
  Pages pages_;
};

}  // namespace

std::unique_ptr<SettingsWindow> SettingsWindow::create(Size contentSize, std::string_view title) {
  @autoreleasepool {
    installMainMenu();
    return std::make_unique<SystemSettingsWindow>(contentSize, title);
  }
}

}  // namespace vembrix
