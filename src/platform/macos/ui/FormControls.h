#pragma once

#import <AppKit/AppKit.h>

#include "platform/SettingsForm.h"
#import "platform/macos/Arc.h"
#import "platform/macos/ui/ControlTarget.h"

namespace vembrix {

/// What a page keeps of its controls besides their views.
struct FormParts {
  /// Owns what the controls hold weakly.
  NSMutableArray<VembrixControlTarget*>* targets = [NSMutableArray array];
  NSMutableArray<NSColorWell*>* wells = [NSMutableArray array];
  /// By the ids of the form.
  NSMutableDictionary<NSString*, NSTextField*>* statusLabels = [NSMutableDictionary dictionary];
  NSMutableDictionary<NSString*, NSButton*>* buttons = [NSMutableDictionary dictionary];
};

/// One line in that look, neither selectable nor editable.
NSTextField* makeLabel(const std::string& text, const TextStyle& style);

/// The control as it is now, to be laid out by constraints. What it needs besides
/// is added to the parts.
NSView* makeControl(const FormControl& control, FormParts& parts);

/// Of wells, in pairs with their names.
NSGridView* makeColorGrid(const ColorGrid& grid, FormParts& parts);

}  // namespace vembrix
