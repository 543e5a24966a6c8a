#import "platform/macos/ui/FormPage.h"

#import "platform/macos/support/Conversions.h"
#import "platform/macos/ui/Backdrop.h"
#import "platform/macos/ui/FormViews.h"

namespace vembrix {
namespace {

constexpr NSRange kBothColumns{0, 2};

/// Weaker than all other constraints on a column's width.
constexpr NSLayoutPriority kNarrowLabelColumn = 100;

NSGridView* makeGrid() {
  auto* grid = [NSGridView gridViewWithNumberOfColumns:kBothColumns.length rows:0];
  grid.columnSpacing = form_metrics::kColumnSpacing;
  grid.rowSpacing = form_metrics::kRowSpacing;
  grid.rowAlignment = NSGridRowAlignmentFirstBaseline;
  [grid columnAtIndex:0].xPlacement = NSGridCellPlacementTrailing;
  [grid columnAtIndex:1].xPlacement = NSGridCellPlacementLeading;
  return grid;
}

void addRow(NSGridView* grid, const ControlRow& row, FormParts& parts) {
  NSTextField* label = makeLabel(row.label, row.labelStyle);
  NSView* control = makeControl(row.control, parts);
  if (control.accessibilityLabel.length == 0) control.accessibilityTitleUIElement = label;
  if (row.controlWidth) {
    [control.widthAnchor constraintEqualToConstant:*row.controlWidth].active = YES;
  }
  NSGridRow* added = [grid addRowWithViews:@[ label, control ]];
  if (fillsRow(row.control)) [added cellAtIndex:1].xPlacement = NSGridCellPlacementFill;
  if (row.alignment == RowAlignment::Centered) {
    added.rowAlignment = NSGridRowAlignmentNone;
    added.yPlacement = NSGridCellPlacementCenter;
  }
  // Gives the width that no column needs to the controls.
  NSLayoutConstraint* narrow = [label.leadingAnchor constraintEqualToAnchor:grid.leadingAnchor];
  narrow.priority = kNarrowLabelColumn;
  narrow.active = YES;
}

void addRow(NSGridView* grid, const FullRow& row, FormParts& parts) {
  NSView* control = makeControl(row.control, parts);
  NSGridRow* added = [grid addRowWithViews:@[ control, NSGridCell.emptyContentView ]];
  [added mergeCellsInRange:kBothColumns];
  [added cellAtIndex:0].xPlacement =
      fillsRow(row.control) ? NSGridCellPlacementFill : NSGridCellPlacementLeading;
  added.topPadding = row.topPadding;
}

NSView* makeDocument(NSGridView* grid) {
  auto* document = [[VembrixFlippedDocumentView alloc] initWithFrame:NSZeroRect];
  document.translatesAutoresizingMaskIntoConstraints = NO;
  grid.translatesAutoresizingMaskIntoConstraints = NO;
  [document addSubview:grid];
  constexpr CGFloat kMargin = form_metrics::kMargin;
  [NSLayoutConstraint activateConstraints:@[
    [grid.topAnchor constraintEqualToAnchor:document.topAnchor constant:kMargin],
    [grid.leadingAnchor constraintEqualToAnchor:document.leadingAnchor constant:kMargin],
    [document.trailingAnchor constraintEqualToAnchor:grid.trailingAnchor constant:kMargin],
    [document.bottomAnchor constraintEqualToAnchor:grid.bottomAnchor constant:kMargin],
  ]];
  return document;
}

NSScrollView* makeScrollView(NSView* document) {
  auto* scroll = [[NSScrollView alloc] initWithFrame:NSZeroRect];
  scroll.hasVerticalScroller = YES;
  scroll.autohidesScrollers = YES;
  scroll.drawsBackground = NO;
  scroll.borderType = NSNoBorder;
  // The page keeps clear of the title bar by itself.
  scroll.automaticallyAdjustsContentInsets = NO;
  scroll.documentView = document;
  NSClipView* clip = scroll.contentView;
  [NSLayoutConstraint activateConstraints:@[
    [document.topAnchor constraintEqualToAnchor:clip.topAnchor],
    [document.leadingAnchor constraintEqualToAnchor:clip.leadingAnchor],
    [document.trailingAnchor constraintEqualToAnchor:clip.trailingAnchor],
  ]];
  return scroll;
}

NSView* makePage(const SettingsForm& form, FormParts& parts) {
  NSGridView* grid = makeGrid();
  for (const FormRow& row : form.rows) {
    std::visit([&](const auto& kind) { addRow(grid, kind, parts); }, row);
  }
  auto* page = [[NSView alloc] initWithFrame:NSZeroRect];
  pinToEdges(makeScrollView(makeDocument(grid)), page);
  return page;
}

void announce(NSString* text) {
  NSAccessibilityPostNotificationWithUserInfo(
      NSApp, NSAccessibilityAnnouncementRequestedNotification, @{
        NSAccessibilityAnnouncementKey : text,
        NSAccessibilityPriorityKey : @(NSAccessibilityPriorityMedium),
      });
}

}  // namespace

FormPage::FormPage(const SettingsForm& form) : view_(makePage(form, parts_)) {}

FormPage::~FormPage() {
  deactivateWells();
  for (VembrixControlTarget* target in parts_.targets) [target invalidate];
  keepUntilEventEnds(@[ view_, parts_.targets ]);
}

bool FormPage::setStatus(NSString* id, std::string_view text) {
  NSTextField* label = parts_.statusLabels[id];
  if (!label) return false;
  NSString* shown = nativeString(text);
  if ([label.stringValue isEqualToString:shown]) return true;
  label.stringValue = shown;
  if (label.window.visible && !label.hiddenOrHasHiddenAncestor) announce(shown);
  return true;
}

void FormPage::setEnabled(NSString* id, bool isEnabled) { parts_.buttons[id].enabled = isEnabled; }

void FormPage::deactivateWells() {
  for (NSColorWell* well in parts_.wells) {
    if (!well.active) continue;
    [well deactivate];
    // All wells share the panel. Without a well it has no effect.
    [NSColorPanel.sharedColorPanel orderOut:nil];
  }
}

}  // namespace vembrix
