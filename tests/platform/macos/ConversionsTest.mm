#import "platform/macos/support/Conversions.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <vector>

#include "platform/conformance/TextSamples.h"

namespace vembrix {
namespace {

using Array = PropertyList::Array;
using Data = PropertyList::Data;
using Date = PropertyList::Date;
using Dictionary = PropertyList::Dictionary;
using Integers = std::numeric_limits<std::int64_t>;
using Reals = std::numeric_limits<double>;

NSString* stringOf(std::vector<unichar> units) {
  return [NSString stringWithCharacters:units.data() length:units.size()];
}

// From the system

TEST(ConversionsTest, ABooleanIsNoNumber) {
  EXPECT_EQ(propertyListFrom(@YES), PropertyList(true));
  EXPECT_EQ(propertyListFrom(@NO), PropertyList(false));
  EXPECT_EQ(propertyListFrom((__bridge id)kCFBooleanTrue), PropertyList(true));
  EXPECT_EQ(propertyListFrom([NSNumber numberWithBool:YES]), PropertyList(true));
}

TEST(ConversionsTest, ANumberIsNoBoolean) {
  for (NSNumber* one : {[NSNumber numberWithChar:1], [NSNumber numberWithUnsignedChar:1],
                        [NSNumber numberWithShort:1], [NSNumber numberWithInt:1],
                        [NSNumber numberWithUnsignedInt:1], [NSNumber numberWithLong:1],
                        [NSNumber numberWithUnsignedLongLong:1]}) {
    EXPECT_EQ(propertyListFrom(one), PropertyList(1)) << one.objCType;
  }
}

TEST(ConversionsTest, AWholeRealStaysAReal) {
  EXPECT_EQ(propertyListFrom(@1.0), PropertyList(1.0));
  EXPECT_EQ(propertyListFrom(@0.0), PropertyList(0.0));
  EXPECT_EQ(propertyListFrom(@0.5f), PropertyList(0.5));
}

TEST(ConversionsTest, IntegersOf64BitsAreExact) {
  for (const std::int64_t value : {Integers::max(), Integers::max() - 1, Integers::min(),
                                   Integers::min() + 1, std::int64_t{9007199254740993}}) {
    EXPECT_EQ(propertyListFrom(@(value)), PropertyList(value));
  }
  EXPECT_EQ(propertyListFrom([NSNumber numberWithUnsignedLongLong:Integers::max()]),
            PropertyList(Integers::max()));
}

TEST(ConversionsTest, IntegersBeyondAreReals) {
  EXPECT_EQ(propertyListFrom([NSNumber numberWithUnsignedLongLong:~0ULL]),
            PropertyList(18446744073709551615.0));
  EXPECT_EQ(propertyListFrom([NSNumber numberWithUnsignedLongLong:1ULL << 63]),
            PropertyList(9223372036854775808.0));
}

TEST(ConversionsTest, DecimalNumbersAreIntegersOrTheNearestReals) {
  const auto decimal = [](NSString* text) {
    return propertyListFrom([NSDecimalNumber decimalNumberWithString:text]);
  };
  EXPECT_EQ(decimal(@"9223372036854775807"), PropertyList(Integers::max()));
  EXPECT_EQ(decimal(@"9223372036854775808"), PropertyList(9223372036854775808.0));
  EXPECT_EQ(decimal(@"0.1"), PropertyList(0.1));
  EXPECT_EQ(decimal(@"0.69"), PropertyList(0.69));
  EXPECT_EQ(decimal(@"-12345678901234567890.5"), PropertyList(-12345678901234567890.5));
}

TEST(ConversionsTest, RealsThatAreNotFiniteStaySo) {
  EXPECT_EQ(propertyListFrom(@(Reals::infinity())), PropertyList(Reals::infinity()));
  EXPECT_EQ(propertyListFrom(@(-Reals::infinity())), PropertyList(-Reals::infinity()));
  const PropertyList nan = propertyListFrom(@(Reals::quiet_NaN()));
  ASSERT_NE(nan.asReal(), nullptr);
  EXPECT_TRUE(std::isnan(*nan.asReal()));
}

TEST(ConversionsTest, DatesAreSecondsSince2001) {
  EXPECT_EQ(propertyListFrom([NSDate dateWithTimeIntervalSince1970:978307200]),
            PropertyList(Date{0}));
  EXPECT_EQ(propertyListFrom([NSDate dateWithTimeIntervalSinceReferenceDate:-0.25]),
            PropertyList(Date{-0.25}));
}

TEST(ConversionsTest, DataIsItsBytes) {
  EXPECT_EQ(propertyListFrom([NSData data]), PropertyList(Data{}));
  EXPECT_EQ(propertyListFrom([NSData dataWithBytes:"a\0\xFF" length:3]),
            PropertyList(Data{'a', 0, 0xFF}));
  EXPECT_EQ(propertyListFrom([NSMutableData dataWithLength:2]), PropertyList(Data{0, 0}));
}

TEST(ConversionsTest, ObjectsOfOtherKindsAreNull) {
  for (id object : {
         static_cast<id>(nil), static_cast<id>(NSNull.null),
             static_cast<id>([[NSObject alloc] init]),
             static_cast<id>([NSURL fileURLWithPath:@"/"]),
             static_cast<id>([NSSet setWithObject:@1]),
             static_cast<id>([NSValue valueWithRange:NSMakeRange(0, 1)]),
             static_cast<id>([NSString class])
       }) {
    EXPECT_TRUE(propertyListFrom(object).isNull());
  }
}

TEST(ConversionsTest, WhatIsOfAnotherKindWithinAContainerIsNullThere) {
  NSArray* array = @[ @1, NSNull.null, [NSSet set], @[ [[NSObject alloc] init] ] ];
  EXPECT_EQ(propertyListFrom(array),
            PropertyList(Array{1, PropertyList(), PropertyList(), Array{PropertyList()}}));
  EXPECT_EQ(propertyListFrom(@{@"a" : NSNull.null}),
            PropertyList(Dictionary{{"a", PropertyList()}}));
}

TEST(ConversionsTest, KeysThatAreNoStringsArePassedOver) {
  NSDictionary* mixed = @{@1 : @"number", @"a" : @2, NSNull.null : @3, @[] : @4};
  EXPECT_EQ(propertyListFrom(mixed), PropertyList(Dictionary{{"a", 2}}));
}

TEST(ConversionsTest, AMutableObjectIsTakenAsItIsNow) {
  auto* array = [NSMutableArray arrayWithObject:[NSMutableString stringWithString:@"first"]];
  const PropertyList taken = propertyListFrom(array);
  [array.firstObject setString:@"second"];
  [array addObject:@1];
  EXPECT_EQ(taken, PropertyList(Array{"first"}));
}

// Text

TEST(ConversionsTest, StringsOfAllScriptsComeBack) {
  std::vector<std::string> texts = textSamples();
  texts.insert(texts.end(), {"", std::string(1, '\0'), std::string("a\0b", 3),
                             std::string(100000, 'x'), "\x01\x1F"});
  for (const std::string& text : texts) {
    EXPECT_EQ(utf8String(nativeString(text)), text);
    EXPECT_EQ(propertyListFrom(nativeObject(text, NativeForm::PropertyList)), PropertyList(text));
  }
}

TEST(ConversionsTest, BytesThatAreNoUtf8AreReplaced) {
  for (const std::string& bytes : malformedUtf8Samples()) {
    NSString* text = nativeString("<" + bytes + ">");
    ASSERT_NE(text, nil);
    EXPECT_GE(text.length, 3U);
    EXPECT_EQ([text characterAtIndex:1], 0xFFFD);
    EXPECT_EQ([text characterAtIndex:text.length - 1], '>');
  }
}

TEST(ConversionsTest, LoneSurrogatesBecomeQuestionMarks) {
  EXPECT_EQ(utf8String(stringOf({0xD800})), "?");
  EXPECT_EQ(utf8String(stringOf({0xDC00})), "?");
  EXPECT_EQ(utf8String(stringOf({'a', 0xD83D, 'b'})), "a?b");
  EXPECT_EQ(utf8String(stringOf({0xDE00, 0xD83D})), "??");
  EXPECT_EQ(utf8String(stringOf({0xD83D, 0xDE00})), "\U0001F600");
  EXPECT_EQ(propertyListFrom(@{stringOf({0xD800}) : @1}), PropertyList(Dictionary{{"?", 1}}));
}

TEST(ConversionsTest, NoStringIsEmpty) { EXPECT_EQ(utf8String(nil), ""); }

TEST(ConversionsTest, BorrowedDataIsNoCopy) {
  const std::string bytes(1000, 'x');
  EXPECT_EQ(borrowedData(bytes).bytes, bytes.data());
  EXPECT_EQ(borrowedData(bytes).length, bytes.size());
  EXPECT_EQ(borrowedData({}).length, 0U);
}

// To the system

TEST(ConversionsTest, ValuesOfAllKindsComeBack) {
  const PropertyList value = Dictionary{{"array", Array{1, "two", 3.5, Array{}, Dictionary{}}},
                                        {"data", Data{0, 1, 255}},
                                        {"none", Data{}},
                                        {"date", Date{700000000.25}},
                                        {"least", Integers::min()},
                                        {"real", -1e-10},
                                        {"infinite", Reals::infinity()},
                                        {"yes", true},
                                        {"no", false},
                                        {"", "empty key"}};
  EXPECT_EQ(propertyListFrom(nativeObject(value, NativeForm::PropertyList)), value);
}

TEST(ConversionsTest, TypesAreKept) {
  EXPECT_EQ(nativeObject(true, NativeForm::PropertyList), (__bridge id)kCFBooleanTrue);
  EXPECT_EQ(nativeObject(false, NativeForm::Json), (__bridge id)kCFBooleanFalse);
  const auto isReal = [](const PropertyList& value) {
    return static_cast<bool>(
        CFNumberIsFloatType((__bridge CFNumberRef)nativeObject(value, NativeForm::PropertyList)));
  };
  EXPECT_TRUE(isReal(1.0));
  EXPECT_FALSE(isReal(1));
}

TEST(ConversionsTest, NullHasAFormInJsonOnly) {
  EXPECT_EQ(nativeObject({}, NativeForm::PropertyList), nil);
  EXPECT_EQ(nativeObject(Array{1, {}}, NativeForm::PropertyList), nil);
  EXPECT_EQ(nativeObject(Dictionary{{"a", Array{{}}}}, NativeForm::PropertyList), nil);
  EXPECT_EQ(nativeObject({}, NativeForm::Json), NSNull.null);
}

TEST(ConversionsTest, WhatAFormCannotHoldHasNone) {
  for (const PropertyList& value :
       {PropertyList(Reals::quiet_NaN()), PropertyList(Reals::infinity()), PropertyList(Data{1}),
        PropertyList(Date{1}), PropertyList(Array{Data{}})}) {
    EXPECT_EQ(nativeObject(value, NativeForm::Json), nil);
    EXPECT_NE(nativeObject(value, NativeForm::PropertyList), nil);
  }
  for (const double seconds : {Reals::quiet_NaN(), Reals::infinity(), -Reals::infinity()}) {
    EXPECT_EQ(nativeObject(Array{Date{seconds}}, NativeForm::PropertyList), nil);
  }
}

// Colours and geometry

TEST(ConversionsTest, FixedColoursComeBack) {
  for (const Srgb& color : {kBlack, kWhite, Srgb{0.25, 0.5, 0.75, 0.5}, Srgb{0, 0, 0, 0}}) {
    const Srgb back = srgbFrom(nativeColor(color));
    EXPECT_NEAR(back.red, color.red, 1e-6);
    EXPECT_NEAR(back.green, color.green, 1e-6);
    EXPECT_NEAR(back.blue, color.blue, 1e-6);
    EXPECT_NEAR(back.alpha, color.alpha, 1e-6);
  }
}

TEST(ConversionsTest, ColoursOfOtherSpacesAreConverted) {
  const Srgb gray = srgbFrom([NSColor colorWithWhite:0 alpha:0.5]);
  EXPECT_NEAR(gray.red, 0, 0.01);
  EXPECT_NEAR(gray.alpha, 0.5, 1e-6);
  EXPECT_NEAR(srgbFrom([NSColor whiteColor]).green, 1, 0.01);
}

TEST(ConversionsTest, AColourWithoutComponentsIsBlack) {
  NSImage* image = [[NSImage alloc] initWithSize:NSMakeSize(2, 2)];
  EXPECT_EQ(srgbFrom([NSColor colorWithPatternImage:image]), kBlack);
  EXPECT_EQ(srgbFrom(nil), kBlack);
}

TEST(ConversionsTest, ANamedColourTakesAnAlphaOfItsOwn) {
  EXPECT_NEAR(srgbFrom(nativeColor(Color(SystemColor::Label, 0.25))).alpha, 0.25, 1e-6);
  EXPECT_TRUE([nativeColor(Color(SystemColor::Link)) isEqual:NSColor.linkColor]);
}

TEST(ConversionsTest, AppearancesComeBack) {
  EXPECT_EQ(nativeAppearance(std::nullopt), nil);
  EXPECT_EQ(appearanceFrom(nil), std::nullopt);
  for (const Appearance appearance : {Appearance::Light, Appearance::Dark}) {
    EXPECT_EQ(appearanceFrom(nativeAppearance(appearance)), appearance);
  }
}

}  // namespace
}  // namespace vembrix
