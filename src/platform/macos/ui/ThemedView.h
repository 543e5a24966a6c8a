#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <vector>

#include "platform/SettingsWindow.h"
#import "platform/macos/ui/ControlTarget.h"
#import "platform/macos/ui/PillTabButton.h"

namespace vembrix {

/// The root view of a themed window: a backdrop, tab buttons and the box that holds the page. Owns
/// these views and the actions of the buttons; the page belongs to its owner. May be destroyed
/// during a click on one of its buttons. Main thread.
class ThemedView {
 public:
  /// `onClick` receives the index of a button.
  ThemedView(const ThemedContent& content, std::function<void(int index)> onClick);
  ~ThemedView();

  ThemedView(const ThemedView&) = delete;
  ThemedView& operator=(const ThemedView&) = delete;

  [[nodiscard]] NSView* root() const { return root_; }

  /// Replaces the page, on a card if there is one, and updates the look of the buttons, whose
  /// number must not change.
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
