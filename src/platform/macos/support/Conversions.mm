#import "platform/macos/support/Conversions.h"

#include <stdlib.h>
#include <xlocale.h>

#include <cmath>
#include <utility>

#include "platform/macos/support/CFOwned.h"
#include "platform/portable/Utf8.h"

namespace vembrix {
namespace {

NSString* stringFromValidUtf8(std::string_view text) {
  // Marks it as an internal representation, in which a byte order mark is an ordinary character.
  CFStringRef string = CFStringCreateWithBytes(
      kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
      static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, /*isExternalRepresentation=*/false);
  return string ? CFBridgingRelease(string) : @"";
}

NSNumber* nativeReal(double value, NativeForm form) {
  return form == NativeForm::Json && !std::isfinite(value) ? nil : @(value);
}

NSDate* nativeDate(PropertyList::Date date, NativeForm form) {
  if (form == NativeForm::Json || !std::isfinite(date.seconds)) return nil;
  return [NSDate dateWithTimeIntervalSinceReferenceDate:date.seconds];
}

NSArray* nativeArray(const PropertyList::Array& array, NativeForm form) {
  auto* result = [NSMutableArray arrayWithCapacity:array.size()];
  for (const PropertyList& element : array) {
    id object = nativeObject(element, form);
    if (!object) return nil;
    [result addObject:object];
  }
  return result;
}

NSDictionary* nativeDictionary(const PropertyList::Dictionary& dictionary, NativeForm form) {
  auto* result = [NSMutableDictionary dictionaryWithCapacity:dictionary.size()];
  for (const auto& [key, value] : dictionary) {
    id object = nativeObject(value, form);
    if (!object) return nil;
    result[nativeString(key)] = object;
  }
  return result;
}

/// Converts JSON's numbers that have more digits than a double.
PropertyList decimalFrom(NSDecimalNumber* number) {
  const std::int64_t whole = number.longLongValue;
  if ([number compare:@(whole)] == NSOrderedSame) return whole;
  // Its own doubleValue can be wrong in the last bits.
  return strtod_l([number descriptionWithLocale:nil].UTF8String, nullptr, LC_C_LOCALE);
}

PropertyList numberFrom(NSNumber* number) {
  const auto ref = (__bridge CFNumberRef)number;
  // Both classes are NSNumber; only the type distinguishes a Boolean from 0 and 1.
  if (CFGetTypeID(ref) == CFBooleanGetTypeID()) return number.boolValue == YES;
  if ([number isKindOfClass:[NSDecimalNumber class]]) {
    return decimalFrom(static_cast<NSDecimalNumber*>(number));
  }
  std::int64_t whole = 0;
  if (!CFNumberIsFloatType(ref) && CFNumberGetValue(ref, kCFNumberSInt64Type, &whole)) return whole;
  return number.doubleValue;
}

PropertyList arrayFrom(NSArray* array) {
  PropertyList::Array result;
  result.reserve(array.count);
  for (id element in array) result.push_back(propertyListFrom(element));
  return result;
}

PropertyList dictionaryFrom(NSDictionary* dictionary) {
  PropertyList::Dictionary result;
  for (id key in dictionary) {
    if (![key isKindOfClass:[NSString class]]) continue;
    result.insert_or_assign(utf8String(key), propertyListFrom(dictionary[key]));
  }
  return result;
}

NSFontWeight nativeWeight(Font::Weight weight) {
  switch (weight) {
    case Font::Weight::Regular:
      return NSFontWeightRegular;
    case Font::Weight::Semibold:
      return NSFontWeightSemibold;
    case Font::Weight::Heavy:
      return NSFontWeightHeavy;
  }
}

NSColor* systemColor(SystemColor name) {
  switch (name) {
    case SystemColor::ControlAccent:
      return NSColor.controlAccentColor;
    case SystemColor::Label:
      return NSColor.labelColor;
    case SystemColor::SecondaryLabel:
      return NSColor.secondaryLabelColor;
    case SystemColor::TextBackground:
      return NSColor.textBackgroundColor;
    case SystemColor::Separator:
      return NSColor.separatorColor;
    case SystemColor::WindowBackground:
      return NSColor.windowBackgroundColor;
    case SystemColor::Link:
      return NSColor.linkColor;
  }
}

}  // namespace

NSString* nativeString(std::string_view text) {
  const std::optional<std::string> repaired = repairedUtf8(text);
  return stringFromValidUtf8(repaired ? *repaired : text);
}

std::string utf8String(NSString* text) {
  const auto string = (__bridge CFStringRef)text;
  std::string result;
  if (!string) return result;
  constexpr UInt8 kLoss = '?';
  const CFRange all = CFRangeMake(0, CFStringGetLength(string));
  CFIndex size = 0;
  CFStringGetBytes(string, all, kCFStringEncodingUTF8, kLoss, false, nullptr, 0, &size);
  result.resize(static_cast<std::size_t>(size));
  CFStringGetBytes(string, all, kCFStringEncodingUTF8, kLoss, false,
                   reinterpret_cast<UInt8*>(result.data()), size, nullptr);
  return result;
}

NSData* borrowedData(std::string_view bytes) {
  return [NSData dataWithBytesNoCopy:const_cast<char*>(bytes.data())
                              length:bytes.size()
                        freeWhenDone:NO];
}

id nativeObject(const PropertyList& value, NativeForm form) {
  if (value.isNull()) return form == NativeForm::Json ? NSNull.null : nil;
  if (const bool* boolean = value.asBool()) return *boolean ? @YES : @NO;
  if (const std::int64_t* integer = value.asInteger()) return @(*integer);
  if (const double* real = value.asReal()) return nativeReal(*real, form);
  if (const std::string* string = value.asString()) return nativeString(*string);
  if (const PropertyList::Date* date = value.asDate()) return nativeDate(*date, form);
  if (const PropertyList::Array* array = value.asArray()) return nativeArray(*array, form);
  if (const PropertyList::Dictionary* dictionary = value.asDictionary()) {
    return nativeDictionary(*dictionary, form);
  }
  const PropertyList::Data* data = value.asData();
  if (!data || form == NativeForm::Json) return nil;
  return [NSData dataWithBytes:data->data() length:data->size()];
}

PropertyList propertyListFrom(id object) {
  if ([object isKindOfClass:[NSString class]]) return utf8String(object);
  if ([object isKindOfClass:[NSNumber class]]) return numberFrom(object);
  if ([object isKindOfClass:[NSDictionary class]]) return dictionaryFrom(object);
  if ([object isKindOfClass:[NSArray class]]) return arrayFrom(object);
  if ([object isKindOfClass:[NSData class]]) {
    NSData* data = object;
    const auto* bytes = static_cast<const std::uint8_t*>(data.bytes);
    return PropertyList::Data(bytes, bytes + data.length);
  }
  if ([object isKindOfClass:[NSDate class]]) {
    return PropertyList::Date{static_cast<NSDate*>(object).timeIntervalSinceReferenceDate};
  }
  return {};
}

NSColor* nativeColor(const Color& color) {
  if (const std::optional<Srgb> fixed = color.srgb()) {
    return [NSColor colorWithSRGBRed:fixed->red
                               green:fixed->green
                                blue:fixed->blue
                               alpha:fixed->alpha];
  }
  NSColor* named = systemColor(*color.systemColor());
  // An alpha of 1 means the system's own colour, which may itself be translucent, as the
  // separator's is.
  return color.alpha() == 1 ? named : [named colorWithAlphaComponent:color.alpha()];
}

Srgb srgbFrom(NSColor* color) {
  NSColor* converted = [color colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
  if (!converted) converted = [color colorUsingType:NSColorTypeComponentBased];
  if (converted.colorSpace.colorSpaceModel != NSColorSpaceModelRGB) return kBlack;
  CGFloat red = 0;
  CGFloat green = 0;
  CGFloat blue = 0;
  CGFloat alpha = 1;
  [converted getRed:&red green:&green blue:&blue alpha:&alpha];
  return {red, green, blue, alpha};
}

NSFont* nativeFont(const Font& font) {
  const CGFloat size = font.size ? *font.size : NSFont.systemFontSize;
  const NSFontWeight weight = nativeWeight(font.weight);
  return font.design == Font::Design::Monospaced
             ? [NSFont monospacedSystemFontOfSize:size weight:weight]
             : [NSFont systemFontOfSize:size weight:weight];
}

NSAppearance* nativeAppearance(std::optional<Appearance> appearance) {
  if (!appearance) return nil;
  return [NSAppearance appearanceNamed:*appearance == Appearance::Dark ? NSAppearanceNameDarkAqua
                                                                       : NSAppearanceNameAqua];
}

std::optional<Appearance> appearanceFrom(NSAppearance* appearance) {
  NSAppearanceName match = [appearance
      bestMatchFromAppearancesWithNames:@[ NSAppearanceNameDarkAqua, NSAppearanceNameAqua ]];
  if (!match) return std::nullopt;
  return [match isEqualToString:NSAppearanceNameDarkAqua] ? Appearance::Dark : Appearance::Light;
}

}  // namespace vembrix
