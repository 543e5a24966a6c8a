#pragma once

#import <AppKit/AppKit.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/Geometry.h"
#include "platform/PropertyList.h"
#include "platform/macos/support/Arc.h"

namespace vembrix {

// Converts between values of the core and objects of the system. ARC owns returned objects. Any
// thread, unless stated otherwise.

/// Never nil: bytes that are not UTF-8 become U+FFFD.
NSString* nativeString(std::string_view text);
/// Unpaired surrogates, which UTF-8 cannot hold, become "?"; nil becomes empty.
std::string utf8String(NSString* text);

/// Wraps the bytes without a copy; valid as long as they are.
NSData* borrowedData(std::string_view bytes);

/// The target of a conversion, which determines what values can be converted.
enum class NativeForm {
  /// A property list: has no null. Dates that are not finite have no form.
  PropertyList,
  /// Null is NSNull. Data, dates and numbers that are not finite have no form.
  Json,
};

/// Nil if the value, or a value inside it, cannot be converted.
id nativeObject(const PropertyList& value, NativeForm form);

/// Null for nil, NSNull and objects that no property list holds. A whole number beyond 64 bits
/// becomes a real.
PropertyList propertyListFrom(id object);

/// A colour of the system stays dynamic: it is resolved when drawn, for the effective appearance.
NSColor* nativeColor(const Color& color);
/// Returns the components in sRGB; a dynamic colour is resolved for the current drawing appearance.
/// A colour that cannot be converted keeps its red, green and blue components if it has them, else
/// becomes opaque black.
Srgb srgbFrom(NSColor* color);

NSFont* nativeFont(const Font& font);

/// Nil (follow the system) for empty.
NSAppearance* nativeAppearance(std::optional<Appearance> appearance);
/// Returns the better match of light and dark; empty for nil, or if neither matches.
std::optional<Appearance> appearanceFrom(NSAppearance* appearance);

inline NSRect nativeRect(const Rect& rect) {
  return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}
inline NSSize nativeSize(const Size& size) { return NSMakeSize(size.width, size.height); }
inline Point pointFrom(const NSPoint& point) { return {point.x, point.y}; }
inline Size sizeFrom(const NSSize& size) { return {size.width, size.height}; }
inline Rect rectFrom(const NSRect& rect) {
  return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

}  // namespace vembrix
