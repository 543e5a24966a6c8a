#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <vector>

#include "platform/SettingsWindow.h"
#import "platform/macos/ui/ControlTarget.h"
#import "platform/macos/ui/PillTabButton.h"

namespace vembrix {

/// The root of a window in a look of the program's own: a backdrop, tab buttons and
/// the box that holds the page. Owns those views and what the buttons do; the page
/// belongs to its owner. May end within a click on one of its buttons. Main thread.
class ThemedView {
 public:
  /// `onClick` is told the place of a button, from 0.
  ThemedView(const ThemedContent& content, std::function<void(int index)> onClick);
  ~ThemedView();

  ThemedView(const ThemedView&) = delete;
  ThemedView& operator=(const ThemedView&) = delete;

  [[nodiscard]] NSView* root() const { return root_; }

  /// The page in place of the one shown, on a card if there is one, and as many
  /// buttons as there were, as they look now.
  void show(NSView* page, const std::vector<TabButton>& buttons);

 private:
  void addButtons(const ThemedContent& content);
  void addSeparator(const NavigationLayout::Separator& separator);
  void addBox(const Insets& insets);

  NSView* const root_;
  NSView* const box_ = [[NSView alloc] initWithFrame:NSZeroRect];
  NSMutableArray<VembrixPillTabButton*>* const buttons_ = [NSMutableArray array];
  VembrixControlTarget* const target_;
  std::optional<Card> card_;
};

}  // namespace vembrix
