#import "platform/macos/menubar/SpaceRowParts.h"

#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

NSImage* makeImage(const DotImage& given) {
  // The block's own copy, which clang-tidy takes for needless: it draws whenever the
  // menu asks for another scale.
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
  const DotImage drawing = given;
  NSImage* image = [NSImage imageWithSize:nativeSize(drawing.size)
                                  flipped:NO
                           drawingHandler:^BOOL(NSRect) {
                             for (const DotImage::Oval& oval : drawing.ovals) {
                               NSBezierPath* path =
                                   [NSBezierPath bezierPathWithOvalInRect:nativeRect(oval.rect)];
                               if (oval.fill) {
                                 [nativeColor(*oval.fill) setFill];
                                 [path fill];
                               }
                               if (oval.stroke) {
                                 [nativeColor(*oval.stroke) setStroke];
                                 path.lineWidth = oval.lineWidth;
                                 [path stroke];
                               }
                             }
                             return YES;
                           }];
  // Colours of the system are resolved whenever the dot is drawn.
  image.cacheMode = NSImageCacheNever;
  return image;
}

NSImageView* makeDotView(const DotImage& dot) {
  NSImageView* view = [NSImageView imageViewWithImage:makeImage(dot)];
  view.imageScaling = NSImageScaleNone;
  view.accessibilityElement = NO;
  return view;
}

NSTextField* makeLabel(const SpaceRowContent& content, const std::string& text) {
  NSTextField* label = [NSTextField labelWithString:nativeString(text)];
  label.font = nativeFont(content.font);
  label.textColor = NSColor.labelColor;
  label.usesSingleLineMode = YES;
  label.lineBreakMode = NSLineBreakByTruncatingTail;
  label.accessibilityElement = NO;
  return label;
}

NSTextField* makeEditField(const SpaceRowContent& content, const std::string& text) {
  NSTextField* field = makeNameField(nativeFont(content.font), nativeString(content.renameTitle));
  field.stringValue = nativeString(text);
  field.hidden = YES;
  return field;
}

NSButton* makeRenameButton(const SpaceRowContent& content) {
  NSString* title = nativeString(content.renameTitle);
  auto* button = [[NSButton alloc] initWithFrame:NSZeroRect];
  NSImage* symbol = [NSImage imageWithSystemSymbolName:@"pencil.circle.fill"
                              accessibilityDescription:title];
  button.image = [symbol
      imageWithSymbolConfiguration:[NSImageSymbolConfiguration
                                       configurationWithPointSize:row_metrics::kRenameSymbolSize
                                                           weight:NSFontWeightRegular]];
  button.contentTintColor = NSColor.secondaryLabelColor;
  button.bordered = NO;
  button.bezelStyle = NSBezelStyleRegularSquare;
  button.imagePosition = NSImageOnly;
  // If the button could have the keyboard, the Tab key would take the caret from a row that is
  // being edited to the button under the pointer, for users who move by keyboard among all
  // controls.
  button.refusesFirstResponder = YES;
  button.toolTip = title;
  button.accessibilityLabel = title;
  button.hidden = YES;
  return button;
}

/// Returns the constraints that keep the parts where layOutRow() places them, for every width of
/// the row.
NSArray<NSLayoutConstraint*>* constraints(NSView* row, NSView* dot, const SpaceRowParts& parts) {
  const Size size = row_metrics::kSize;
  const SpaceRowLayout layout = layOutRow(size);
  const auto leading = [row](NSView* part, const Rect& frame) {
    return [part.leadingAnchor constraintEqualToAnchor:row.leadingAnchor constant:frame.x];
  };
  const auto trailingInset = [&size](const Rect& frame) {
    return size.width - frame.x - frame.width;
  };
  const auto trailing = [&](NSView* part, const Rect& frame) {
    return [part.trailingAnchor constraintEqualToAnchor:row.trailingAnchor
                                               constant:-trailingInset(frame)];
  };
  const auto width = [](NSView* part, const Rect& frame) {
    return [part.widthAnchor constraintEqualToConstant:frame.width];
  };
  const auto height = [](NSView* part, const Rect& frame) {
    return [part.heightAnchor constraintEqualToConstant:frame.height];
  };
  NSMutableArray<NSLayoutConstraint*>* all = [NSMutableArray array];
  for (NSView* part in @[ dot, parts.label, parts.editField, parts.renameButton ]) {
    [all addObject:[part.centerYAnchor constraintEqualToAnchor:row.centerYAnchor]];
  }
  [all addObjectsFromArray:@[
    leading(dot, layout.dot),
    width(dot, layout.dot),
    height(dot, layout.dot),

    leading(parts.label, layout.label),
    // As wide as its text, if that is narrower.
    [parts.label.trailingAnchor constraintLessThanOrEqualToAnchor:row.trailingAnchor
                                                         constant:-trailingInset(layout.label)],

    leading(parts.editField, layout.editField),
    trailing(parts.editField, layout.editField),
    height(parts.editField, layout.editField),

    trailing(parts.renameButton, layout.renameButton),
    width(parts.renameButton, layout.renameButton),
    height(parts.renameButton, layout.renameButton),

    [row.heightAnchor constraintEqualToConstant:size.height],
  ]];
  return all;
}

}  // namespace

NSTextField* makeNameField(NSFont* font, NSString* accessibilityLabel) {
  auto* field = [[NSTextField alloc] initWithFrame:NSZeroRect];
  field.font = font;
  field.editable = YES;
  field.bordered = YES;
  field.bezelStyle = NSTextFieldSquareBezel;
  field.drawsBackground = YES;
  field.focusRingType = NSFocusRingTypeDefault;
  // A name longer than the field scrolls in it, on one line.
  field.usesSingleLineMode = YES;
  field.cell.scrollable = YES;
  field.accessibilityLabel = accessibilityLabel;
  return field;
}

SpaceRowParts addSpaceRowParts(NSView* row, const SpaceRowContent& content,
                               const std::string& label) {
  NSImageView* dot = makeDotView(content.dot);
  const SpaceRowParts parts{makeLabel(content, label), makeEditField(content, label),
                            makeRenameButton(content)};
  for (NSView* part in @[ dot, parts.label, parts.editField, parts.renameButton ]) {
    part.translatesAutoresizingMaskIntoConstraints = NO;
    [row addSubview:part];
  }
  [NSLayoutConstraint activateConstraints:constraints(row, dot, parts)];
  return parts;
}

}  // namespace vembrix
