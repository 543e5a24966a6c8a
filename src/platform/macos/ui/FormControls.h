#pragma once

#import <AppKit/AppKit.h>

#include "platform/SettingsForm.h"
#import "platform/macos/support/Arc.h"
#import "platform/macos/ui/ControlTarget.h"

namespace vembrix {

/// The parts of a page's controls besides their views.
struct FormParts {
  /// The controls' targets, which they hold weakly.
  NSMutableArray<VembrixControlTarget*>* targets = [NSMutableArray array];
  NSMutableArray<NSColorWell*>* wells = [NSMutableArray array];
  /// By the ids of the form.
  NSMutableDictionary<NSString*, NSTextField*>* statusLabels = [NSMutableDictionary dictionary];
  NSMutableDictionary<NSString*, NSButton*>* buttons = [NSMutableDictionary dictionary];
};

/// Creates a line in that style, neither selectable nor editable.
NSTextField* makeLabel(const std::string& text, const TextStyle& style);

/// Creates the control, to be laid out by constraints, and adds its other objects to the parts.
NSView* makeControl(const FormControl& control, FormParts& parts);

/// Creates the grid of wells and their names.
NSGridView* makeColorGrid(const ColorGrid& grid, FormParts& parts);

}  // namespace vembrix
