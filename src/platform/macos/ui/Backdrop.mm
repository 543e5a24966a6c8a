#import "platform/macos/ui/Backdrop.h"

#import <QuartzCore/QuartzCore.h>

#include <cstddef>
#include <vector>

#import "platform/macos/support/CoderUnsupported.h"
#import "platform/macos/support/Conversions.h"

namespace {

/// Returns an evenly spaced gradient that is mixed in sRGB, the space of the colours. By default a
/// gradient is mixed in a space with another gamma, whose middle tones are lighter.
NSGradient* makeGradient(NSArray<NSColor*>* colors) {
  // A gradient needs two colours.
  if (colors.count == 1) colors = @[ colors[0], colors[0] ];
  std::vector<CGFloat> locations(colors.count);
  const CGFloat last = static_cast<CGFloat>(colors.count) - 1;
  for (std::size_t i = 0; i < locations.size(); ++i) locations[i] = static_cast<CGFloat>(i) / last;
  return [[NSGradient alloc] initWithColors:colors
                                atLocations:locations.data()
                                 colorSpace:NSColorSpace.sRGBColorSpace];
}

}  // namespace

@implementation VembrixLayerView

- (instancetype)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  if (self) {
    self.wantsLayer = YES;
    self.layer.masksToBounds = YES;
  }
  return self;
}

- (void)setFill:(NSColor*)fill {
  _fill = [fill copy];
  [self applyColors];
}

- (void)setStroke:(NSColor*)stroke {
  _stroke = [stroke copy];
  [self applyColors];
}

- (void)setStrokeWidth:(CGFloat)width {
  _strokeWidth = width;
  [self applyColors];
}

- (void)setCornerRadius:(CGFloat)radius {
  _cornerRadius = radius;
  self.layer.cornerRadius = radius;
}

- (void)viewDidMoveToWindow {
  [super viewDidMoveToWindow];
  [self applyColors];
}

- (void)viewDidChangeEffectiveAppearance {
  [super viewDidChangeEffectiveAppearance];
  [self applyColors];
}

/// Resolves system colours for the view's present appearance, because a layer's colours are fixed
/// when they are set.
- (void)applyColors {
  CALayer* layer = self.layer;
  [self.effectiveAppearance performAsCurrentDrawingAppearance:^{
    layer.backgroundColor = self.fill.CGColor;
    layer.borderColor = self.stroke.CGColor;
  }];
  layer.borderWidth = self.stroke ? self.strokeWidth : 0;
}

@end

@implementation VembrixGradientView

- (instancetype)initWithColors:(NSArray<NSColor*>*)colors {
  self = [super initWithFrame:NSZeroRect];
  if (self && colors.count > 0) _gradient = makeGradient(colors);
  return self;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
  vembrix::coderIsUnsupported();
}

- (void)drawRect:(NSRect)dirtyRect {
  // The angle counts from the left edge, counterclockwise.
  constexpr CGFloat kDownwards = 270;
  [self.gradient drawInRect:self.bounds angle:kDownwards];
}

@end

namespace vembrix {
namespace {

NSView* makeView(std::monostate) { return nil; }

NSView* makeView(const Color& color) {
  auto* view = [[VembrixLayerView alloc] initWithFrame:NSZeroRect];
  view.fill = nativeColor(color);
  return view;
}

NSView* makeView(const GradientBackdrop& backdrop) {
  NSMutableArray<NSColor*>* colors = [NSMutableArray array];
  for (const Color& color : backdrop.colors) [colors addObject:nativeColor(color)];
  return [[VembrixGradientView alloc] initWithColors:colors];
}

NSVisualEffectMaterial nativeMaterial(Material material) {
  switch (material) {
    case Material::Sidebar:
      return NSVisualEffectMaterialSidebar;
  }
}

NSView* makeView(Material material) {
  auto* view = [[NSVisualEffectView alloc] initWithFrame:NSZeroRect];
  view.material = nativeMaterial(material);
  view.blendingMode = NSVisualEffectBlendingModeBehindWindow;
  view.state = NSVisualEffectStateActive;
  return view;
}

}  // namespace

NSView* makeBackdrop(const Backdrop& backdrop) {
  return std::visit([](const auto& kind) { return makeView(kind); }, backdrop);
}

void pinToEdges(NSView* view, NSView* container) {
  view.translatesAutoresizingMaskIntoConstraints = NO;
  [container addSubview:view];
  [NSLayoutConstraint activateConstraints:@[
    [view.topAnchor constraintEqualToAnchor:container.topAnchor],
    [view.leadingAnchor constraintEqualToAnchor:container.leadingAnchor],
    [view.bottomAnchor constraintEqualToAnchor:container.bottomAnchor],
    [view.trailingAnchor constraintEqualToAnchor:container.trailingAnchor],
  ]];
}

}  // namespace vembrix
