#pragma once

#import <Foundation/Foundation.h>

namespace vembrix {

/// Marks a text that users read as localised for the analyser, as the program is in English alone:
/// see "Style" in CONTRIBUTING.md.
__attribute__((annotate("returns_localized_nsstring"))) inline NSString* englishText(
    NSString* text) {
  return text;
}

}  // namespace vembrix
