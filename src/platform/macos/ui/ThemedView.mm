#import "platform/macos/ui/ThemedView.h"

#include <algorithm>
#include <utility>

#import "platform/macos/support/Conversions.h"
#import "platform/macos/ui/Backdrop.h"

namespace vembrix {
namespace {

/// By value: blocks keep copies of values only, which clang-tidy does not know.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
VembrixControlTarget* makeTarget(std::function<void(int)> onClick) {
  return [[VembrixControlTarget alloc] initWithHandler:^(NSControl* sender) {
    onClick(static_cast<int>(sender.tag));
  }];
}

NSStackView* makeStack(NSArray<NSView*>* views, const NavigationLayout& layout) {
  const bool isColumn = layout.axis == NavigationLayout::Axis::Vertical;
  NSStackView* stack = [NSStackView stackViewWithViews:views];
  stack.orientation = isColumn ? NSUserInterfaceLayoutOrientationVertical
                               : NSUserInterfaceLayoutOrientationHorizontal;
  stack.alignment = isColumn ? NSLayoutAttributeLeading : NSLayoutAttributeCenterY;
  stack.spacing = layout.spacing;
  return stack;
}

NSView* makeCard(const Card& card) {
  auto* view = [[VembrixLayerView alloc] initWithFrame:NSZeroRect];
  view.cornerRadius = card.cornerRadius;
  view.strokeWidth = Card::strokeWidth;
  if (card.fill) view.fill = nativeColor(*card.fill);
  if (card.stroke) view.stroke = nativeColor(*card.stroke);
  return view;
}

}  // namespace

ThemedView::ThemedView(const ThemedContent& content, std::function<void(int)> onClick)
    : root_([[NSView alloc]
          initWithFrame:NSMakeRect(0, 0, content.rootSize.width, content.rootSize.height)]),
      target_(makeTarget(std::move(onClick))),
      card_(content.card) {
  if (NSView* backdrop = makeBackdrop(content.backdrop)) pinToEdges(backdrop, root_);
  addButtons(content);
  if (content.navigation.separator) addSeparator(*content.navigation.separator);
  addBox(content.navigation.content);
}

ThemedView::~ThemedView() {
  [target_ invalidate];
  keepUntilEventEnds(@[ root_, target_ ]);
}

void ThemedView::show(NSView* page, const std::vector<TabButton>& looks) {
  // A copy, because the loop removes views from the original.
  for (NSView* old in [box_.subviews copy]) [old removeFromSuperview];
  if (card_) {
    NSView* card = makeCard(*card_);
    pinToEdges(page, card);
    pinToEdges(card, box_);
  } else {
    pinToEdges(page, box_);
  }
  const std::size_t count = std::min<std::size_t>(buttons_.count, looks.size());
  for (std::size_t i = 0; i < count; ++i) [buttons_[i] show:looks[i]];
}

void ThemedView::addButtons(const ThemedContent& content) {
  const NavigationLayout& layout = content.navigation;
  for (std::size_t i = 0; i < content.page.buttons.size(); ++i) {
    auto* button = [[VembrixPillTabButton alloc] initWithFrame:NSZeroRect];
    button.tag = static_cast<NSInteger>(i);
    setTarget(button, target_);
    if (layout.buttonWidth) {
      [button.widthAnchor constraintEqualToConstant:*layout.buttonWidth].active = YES;
    }
    [buttons_ addObject:button];
  }
  NSStackView* stack = makeStack(buttons_, layout);
  [root_ addSubview:stack];
  NSLayoutConstraint* side =
      layout.leading ? [stack.leadingAnchor constraintEqualToAnchor:root_.leadingAnchor
                                                           constant:*layout.leading]
                     : [stack.centerXAnchor constraintEqualToAnchor:root_.centerXAnchor];
  [NSLayoutConstraint activateConstraints:@[
    side,
    [stack.topAnchor constraintEqualToAnchor:root_.topAnchor constant:layout.top],
  ]];
}

void ThemedView::addSeparator(const NavigationLayout::Separator& separator) {
  auto* line = [[VembrixLayerView alloc] initWithFrame:NSZeroRect];
  line.fill = nativeColor(separator.color);
  line.translatesAutoresizingMaskIntoConstraints = NO;
  [root_ addSubview:line];
  [NSLayoutConstraint activateConstraints:@[
    [line.topAnchor constraintEqualToAnchor:root_.topAnchor],
    [line.bottomAnchor constraintEqualToAnchor:root_.bottomAnchor],
    [line.leadingAnchor constraintEqualToAnchor:root_.leadingAnchor constant:separator.leading],
    [line.widthAnchor constraintEqualToConstant:separator.width],
  ]];
}

void ThemedView::addBox(const Insets& insets) {
  box_.translatesAutoresizingMaskIntoConstraints = NO;
  [root_ addSubview:box_];
  [NSLayoutConstraint activateConstraints:@[
    [box_.topAnchor constraintEqualToAnchor:root_.topAnchor constant:insets.top],
    [box_.leadingAnchor constraintEqualToAnchor:root_.leadingAnchor constant:insets.leading],
    [root_.bottomAnchor constraintEqualToAnchor:box_.bottomAnchor constant:insets.bottom],
    [root_.trailingAnchor constraintEqualToAnchor:box_.trailingAnchor constant:insets.trailing],
  ]];
}

}  // namespace vembrix
