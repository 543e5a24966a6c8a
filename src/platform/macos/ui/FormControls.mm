#import "platform/macos/ui/FormControls.h"

#import "platform/macos/support/Conversions.h"
#import "platform/macos/ui/FormViews.h"

namespace vembrix {
namespace {

/// A label and a well for each pair.
constexpr NSInteger kGridColumns = NSInteger{2} * form_metrics::kPairsPerRow;

/// The priority against truncating a line: weaker than the window's size, stronger than the width
/// of a grid's columns.
const double kOneLineResistance = NSLayoutPriorityWindowSizeStayPut - 1;

// The blocks copy the closures and run as long as their targets are valid; the form need not
// outlive the call that creates its controls.

void addTarget(NSControl* control, FormParts& parts, void (^handler)(NSControl* sender)) {
  auto* target = [[VembrixControlTarget alloc] initWithHandler:handler];
  [parts.targets addObject:target];
  setTarget(control, target);
}

/// Sets the accessible name. A control without one is named by its title.
void setAccessibleName(NSView* control, const std::string& name) {
  if (!name.empty()) control.accessibilityLabel = nativeString(name);
}

void setStyle(NSTextField* field, const TextStyle& style) {
  field.font = nativeFont(style.font);
  field.textColor = nativeColor(style.color);
}

void setTitle(NSButton* button, const std::string& title, const TextStyle& style) {
  button.title = nativeString(title);
  button.font = nativeFont(style.font);
  // With the common colour the title stays plain, so that the system can dim it with the button.
  if (style.color == TextStyle().color) return;
  NSMutableAttributedString* text = [button.attributedTitle mutableCopy];
  [text addAttribute:NSForegroundColorAttributeName
               value:nativeColor(style.color)
               range:NSMakeRange(0, text.length)];
  button.attributedTitle = text;
}

void setHorizontalResistance(NSView* view, double priority) {
  [view setContentCompressionResistancePriority:static_cast<NSLayoutPriority>(priority)
                                 forOrientation:NSLayoutConstraintOrientationHorizontal];
}

/// Truncates a text that does not fit with an ellipsis; its tool tip shows the whole text. Keeps it
/// from widening the window.
void truncate(NSTextField* field, double resistance) {
  field.usesSingleLineMode = YES;
  field.lineBreakMode = NSLineBreakByTruncatingTail;
  field.allowsExpansionToolTips = YES;
  setHorizontalResistance(field, resistance);
}

NSView* makeView(const Slider& slider, FormParts& parts) {
  NSSlider* view = [NSSlider sliderWithValue:slider.value
                                    minValue:slider.minimum
                                    maxValue:slider.maximum
                                      target:nil
                                      action:nil];
  view.continuous = YES;
  setAccessibleName(view, slider.accessibleName);
  addTarget(view, parts, [onChange = slider.onChange](NSControl* sender) {
    if (onChange) onChange(sender.doubleValue);
  });
  return view;
}

NSView* makeView(const Checkbox& checkbox, FormParts& parts) {
  NSButton* view = [NSButton checkboxWithTitle:@"" target:nil action:nil];
  setTitle(view, checkbox.title, checkbox.style);
  setAccessibleName(view, checkbox.title);
  view.state = checkbox.isOn ? NSControlStateValueOn : NSControlStateValueOff;
  addTarget(view, parts, [onChange = checkbox.onChange](NSControl* sender) {
    if (onChange) onChange(static_cast<NSButton*>(sender).state == NSControlStateValueOn);
  });
  return view;
}

void popupDidSelect(NSPopUpButton* popup,
                    const std::function<void(int, const std::string&)>& onSelect) {
  const NSInteger index = popup.indexOfSelectedItem;
  if (!onSelect || index < 0) return;
  onSelect(static_cast<int>(index), utf8String(popup.titleOfSelectedItem));
}

NSView* makeView(const Popup& popup, FormParts& parts) {
  auto* view = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
  view.font = nativeFont(popup.style.font);
  for (const std::string& item : popup.items) {
    // The button's own method would remove an earlier item of the same title.
    [view.menu addItemWithTitle:nativeString(item) action:nil keyEquivalent:@""];
  }
  [view selectItemAtIndex:popup.selected.value_or(-1)];
  setAccessibleName(view, popup.accessibleName);
  addTarget(view, parts, [onSelect = popup.onSelect](NSControl* sender) {
    popupDidSelect(static_cast<NSPopUpButton*>(sender), onSelect);
  });
  return view;
}

NSView* makeView(const WrappingLabel& label, FormParts&) {
  auto* view = [VembrixWrappingLabel wrappingLabelWithString:nativeString(label.text)];
  view.selectable = NO;
  setStyle(view, label.style);
  setHorizontalResistance(view, label.compressionResistance);
  return view;
}

NSView* makeView(const Header& header, FormParts&) { return makeLabel(header.text, header.style); }

NSView* makeView(const ColorGrid& grid, FormParts& parts) { return makeColorGrid(grid, parts); }

NSButton* makeButton(const PushButton& button) {
  if (button.bezel == PushButton::Bezel::Link) {
    auto* view = [VembrixLinkButton buttonWithTitle:nativeString(button.title)
                                             target:nil
                                             action:nil];
    view.bordered = NO;
    view.font = nativeFont(button.style.font);
    view.contentTintColor = nativeColor(button.style.color);
    return view;
  }
  NSButton* view = [NSButton buttonWithTitle:@"" target:nil action:nil];
  view.bezelStyle = NSBezelStyleRounded;
  setTitle(view, button.title, button.style);
  return view;
}

NSView* makeView(const PushButton& button, FormParts& parts) {
  NSButton* view = makeButton(button);
  view.enabled = button.isEnabled;
  setAccessibleName(view, button.title);
  addTarget(view, parts, [action = button.action](NSControl*) {
    if (action) action();
  });
  if (!button.id.empty()) parts.buttons[nativeString(button.id)] = view;
  return view;
}

NSView* makeView(const SelectableText& text, FormParts&) {
  NSTextField* view = makeLabel(text.text, text.style);
  view.selectable = YES;
  truncate(view, kOneLineResistance);
  setAccessibleName(view, text.accessibleName);
  return view;
}

NSView* makeView(const CommandField& command, FormParts&) {
  NSTextField* view = [NSTextField textFieldWithString:nativeString(command.text)];
  view.editable = NO;
  view.selectable = YES;
  view.bordered = YES;
  view.bezeled = YES;
  view.bezelStyle = NSTextFieldRoundedBezel;
  setStyle(view, command.style);
  truncate(view, command.compressionResistance);
  setAccessibleName(view, command.accessibleName);
  return view;
}

NSView* makeView(const StatusLabel& label, FormParts& parts) {
  NSTextField* view = makeLabel(label.text, label.style);
  truncate(view, kOneLineResistance);
  parts.statusLabels[nativeString(label.id)] = view;
  return view;
}

/// Returns the list of the colours by name. The names keep them distinct.
NSColorList* colorList(const std::vector<ColorGrid::Well>& swatches) {
  auto* list = [[NSColorList alloc] initWithName:@"Vembrix"];
  for (const ColorGrid::Well& swatch : swatches) {
    NSString* name = nativeString(swatch.name);
    while ([list colorWithKey:name]) name = [name stringByAppendingString:@"\u2032"];
    [list setColor:nativeColor(swatch.color) forKey:name];
  }
  return list;
}

NSColorWell* makeWell(const ColorGrid& grid, NSInteger place) {
  const ColorGrid::Well& well = grid.wells[static_cast<std::size_t>(place)];
  auto* view = [[VembrixColorWell alloc] initWithFrame:NSZeroRect];
  if (grid.swatches) {
    view.swatches = [swatches = grid.swatches] { return colorList(swatches()); };
  }
  view.color = nativeColor(well.color);
  view.continuous = YES;
  view.tag = place;
  setAccessibleName(view, well.name);
  [NSLayoutConstraint activateConstraints:@[
    [view.widthAnchor constraintEqualToConstant:form_metrics::kWellSize.width],
    [view.heightAnchor constraintEqualToConstant:form_metrics::kWellSize.height],
  ]];
  return view;
}

void wellDidChange(NSColorWell* well, const std::function<void(int, const Color&)>& onChange) {
  // A pattern has no components.
  NSColor* color = [well.color colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
  if (onChange && color) onChange(static_cast<int>(well.tag), Color(srgbFrom(color)));
}

NSGridView* makeEmptyColorGrid() {
  auto* grid = [NSGridView gridViewWithNumberOfColumns:kGridColumns rows:0];
  grid.columnSpacing = form_metrics::kWellColumnSpacing;
  grid.rowSpacing = form_metrics::kWellRowSpacing;
  grid.rowAlignment = NSGridRowAlignmentNone;
  grid.yPlacement = NSGridCellPlacementCenter;
  for (NSInteger pair = 0; pair < form_metrics::kPairsPerRow; ++pair) {
    NSGridColumn* names = [grid columnAtIndex:2 * pair];
    names.xPlacement = NSGridCellPlacementTrailing;
    if (pair > 0) names.leadingPadding = form_metrics::kSecondPairPadding;
    [grid columnAtIndex:2 * pair + 1].xPlacement = NSGridCellPlacementLeading;
  }
  return grid;
}

/// Adds the row and begins the next.
void flushRow(NSMutableArray<NSView*>* row, NSGridView* grid) {
  if (row.count == 0) return;
  while (row.count < kGridColumns) [row addObject:NSGridCell.emptyContentView];
  [grid addRowWithViews:row];
  [row removeAllObjects];
}

}  // namespace

NSTextField* makeLabel(const std::string& text, const TextStyle& style) {
  NSTextField* label = [NSTextField labelWithString:nativeString(text)];
  setStyle(label, style);
  return label;
}

NSView* makeControl(const FormControl& control, FormParts& parts) {
  return std::visit([&](const auto& kind) { return makeView(kind, parts); }, control);
}

NSGridView* makeColorGrid(const ColorGrid& colors, FormParts& parts) {
  NSGridView* grid = makeEmptyColorGrid();
  NSMutableArray<NSView*>* row = [NSMutableArray array];
  NSInteger place = 0;
  for (const ColorGrid::Well& well : colors.wells) {
    NSTextField* name = makeLabel(well.name, colors.nameStyle);
    truncate(name, kOneLineResistance);
    // The well has the same accessible name.
    name.accessibilityElement = NO;
    NSColorWell* view = makeWell(colors, place++);
    addTarget(view, parts, [onChange = colors.onChange](NSControl* sender) {
      wellDidChange(static_cast<NSColorWell*>(sender), onChange);
    });
    [parts.wells addObject:view];
    [row addObjectsFromArray:@[ name, view ]];
    if (row.count == kGridColumns) flushRow(row, grid);
  }
  flushRow(row, grid);
  // Without rows the grid has no height of its own.
  if (colors.wells.empty()) [grid.heightAnchor constraintEqualToConstant:0].active = YES;
  return grid;
}

}  // namespace vembrix
