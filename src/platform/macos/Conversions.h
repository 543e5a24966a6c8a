#pragma once

#import <AppKit/AppKit.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/Color.h"
#include "platform/Font.h"
#include "platform/Geometry.h"
#include "platform/PropertyList.h"
#include "platform/macos/Arc.h"

namespace vembrix {

// Between values of the core and objects of the system. Objects are returned as
// ARC has it: the caller owns what it stores. Any thread, but for what the
// comments restrict.

/// Never nil: bytes that are not UTF-8 become U+FFFD.
NSString* nativeString(std::string_view text);
/// Surrogates without their other half, which UTF-8 cannot hold, become "?". Nil
/// is empty.
std::string utf8String(NSString* text);

/// The bytes as they are, without a copy: valid as long as the view's.
NSData* borrowedData(std::string_view bytes);

/// What the forms of a value can hold differs by where it goes.
enum class NativeForm {
  /// A property list: has no null. Dates that are not finite have no form.
  PropertyList,
  /// Null is NSNull. Data, dates and numbers that are not finite have no form.
  Json,
};

/// Nil when the value, or a value inside it, has no such form.
id nativeObject(const PropertyList& value, NativeForm form);

/// Null for nil, NSNull and for objects of other kinds than property lists have.
/// A number that is whole but beyond 64 bits becomes a real.
PropertyList propertyListFrom(id object);

/// A colour by name stays dynamic: it is resolved when it is drawn, for the
/// appearance in effect there.
NSColor* nativeColor(const Color& color);
/// The components in sRGB, resolved for the current drawing appearance if the
/// colour is dynamic. A colour that sRGB cannot express gives its components as
/// they are if it is made of red, green and blue, else opaque black.
Srgb srgbFrom(NSColor* color);

NSFont* nativeFont(const Font& font);

/// Nil (follow the system) for nothing.
NSAppearance* nativeAppearance(std::optional<Appearance> appearance);
/// The better match of light and dark; nothing for nil, or when neither matches.
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
