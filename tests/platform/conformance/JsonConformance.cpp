#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "platform/Json.h"
#include "platform/conformance/OtherLocale.h"
#include "platform/conformance/TextSamples.h"
#include "support/Threads.h"

namespace vembrix {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;
using Reals = std::numeric_limits<double>;
using Integers = std::numeric_limits<std::int64_t>;

/// Returns a value in an array after it was encoded and decoded.
PropertyList throughJson(const PropertyList& value) {
  const std::optional<std::string> text = encodeJson(Array{value});
  const std::optional<PropertyList> array = text ? decodeJson(*text) : std::nullopt;
  const Array* elements = array ? array->asArray() : nullptr;
  return elements && elements->size() == 1 ? elements->front() : PropertyList("lost");
}

/// Returns the value of a JSON text; a message if the text is invalid.
PropertyList decoded(std::string_view text) {
  const std::optional<PropertyList> array = decodeJson(std::string("[").append(text).append("]"));
  const Array* elements = array ? array->asArray() : nullptr;
  return elements && elements->size() == 1 ? elements->front() : PropertyList("invalid");
}

std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  for (std::size_t i = 0; i < count; ++i) result += text;
  return result;
}

// Encoding

TEST(JsonConformance, TheFormIsCompact) {
  EXPECT_EQ(encodeJson(Array{}), "[]");
  EXPECT_EQ(encodeJson(Dictionary{}), "{}");
  EXPECT_EQ(encodeJson(Array{1, -2, true, false, PropertyList(), "a b"}),
            R"([1,-2,true,false,null,"a b"])");
  EXPECT_EQ(encodeJson(Dictionary{{"a", Array{Dictionary{{"b", 1}}}}}), R"({"a":[{"b":1}]})");
}

TEST(JsonConformance, OnlyArraysAndDictionariesHaveAForm) {
  for (const PropertyList& value :
       {PropertyList(), PropertyList(true), PropertyList(1), PropertyList(0.5), PropertyList("a"),
        PropertyList(PropertyList::Date{}), PropertyList(PropertyList::Data{})}) {
    EXPECT_EQ(encodeJson(value), std::nullopt);
  }
}

TEST(JsonConformance, WhatJsonCannotHoldHasNoForm) {
  for (const PropertyList& value :
       {PropertyList(PropertyList::Data{1}), PropertyList(PropertyList::Data{}),
        PropertyList(PropertyList::Date{0}), PropertyList(Reals::quiet_NaN()),
        PropertyList(Reals::infinity()), PropertyList(-Reals::infinity())}) {
    EXPECT_EQ(encodeJson(Array{value}), std::nullopt);
    EXPECT_EQ(encodeJson(Dictionary{{"a", value}}), std::nullopt);
    EXPECT_EQ(encodeJson(Array{1, Dictionary{{"a", Array{value}}}}), std::nullopt);
  }
}

TEST(JsonConformance, LiteralsAndIntegersComeBack) {
  for (const PropertyList& value :
       {PropertyList(), PropertyList(true), PropertyList(false), PropertyList(0), PropertyList(-1),
        PropertyList(std::int64_t{9007199254740993}), PropertyList(Integers::max()),
        PropertyList(Integers::min())}) {
    EXPECT_EQ(throughJson(value), value);
  }
}

TEST(JsonConformance, RealsComeBackToTheLastBit) {
  for (const double value :
       {0.1, 0.69, 0.78, 1.0 / 3, -0.5, 1.0, 160.0, 0.0, 1e-10, 1e22, 1e300, Reals::max(),
        Reals::lowest(), Reals::min(), Reals::denorm_min(), 1 + Reals::epsilon()}) {
    EXPECT_EQ(throughJson(value).number(), value);
  }
}

TEST(JsonConformance, StringsComeBack) {
  std::vector<std::string> texts = textSamples();
  texts.insert(texts.end(), {"", " ", "\"", "\\", "/", "\\u0041", "\b\f\n\r\t", "</script>",
                             std::string(1, '\0'), std::string("a\0b", 3),
                             repeated("\xF0\x9F\x98\x80\"", 20000)});
  for (int c = 1; c < 0x20; ++c) texts.push_back({'a', static_cast<char>(c)});
  for (const std::string& text : texts) {
    EXPECT_TRUE(throughJson(text) == PropertyList(text)) << text.substr(0, 40);
    const PropertyList keyed = Dictionary{{text, 1}};
    EXPECT_TRUE(throughJson(keyed) == keyed) << text.substr(0, 40);
  }
}

TEST(JsonConformance, NestedContainersComeBack) {
  const PropertyList value =
      Dictionary{{"", Array{}},
                 {"space", Dictionary{{"red", 1}, {"green", 0.69}, {"list", Array{Array{}, {}}}}},
                 {"none", PropertyList()}};
  EXPECT_EQ(throughJson(value), value);
  PropertyList deep = "bottom";
  for (int i = 0; i < 50; ++i) deep = Array{Dictionary{{"a", deep}}};
  EXPECT_EQ(throughJson(deep), deep);
}

TEST(JsonConformance, TheTextIsUtf8WhateverTheStrings) {
  for (const std::string& bytes : malformedUtf8Samples()) {
    for (const PropertyList& value :
         {PropertyList(Array{bytes}), PropertyList(Dictionary{{bytes, 1}})}) {
      const std::optional<std::string> text = encodeJson(value);
      ASSERT_TRUE(text);
      EXPECT_TRUE(isWellFormedUtf8(*text));
      EXPECT_TRUE(decodeJson(*text));
    }
  }
}

// Decoding

TEST(JsonConformance, TheTopLevelIsAnArrayOrAnObject) {
  EXPECT_EQ(decodeJson("[]"), PropertyList(Array{}));
  EXPECT_EQ(decodeJson("{}"), PropertyList(Dictionary{}));
  for (const char* text : {"1", "-1.5", "\"a\"", "true", "false", "null"}) {
    EXPECT_EQ(decodeJson(text), std::nullopt) << text;
  }
}

TEST(JsonConformance, LiteralsBecomeBooleansAndNull) {
  EXPECT_EQ(decoded("true"), PropertyList(true));
  EXPECT_EQ(decoded("false"), PropertyList(false));
  EXPECT_EQ(decoded("null"), PropertyList());
}

TEST(JsonConformance, WholeNumbersThatFitAreIntegers) {
  EXPECT_EQ(decoded("0"), PropertyList(0));
  EXPECT_EQ(decoded("-0"), PropertyList(0));
  EXPECT_EQ(decoded("-42"), PropertyList(-42));
  EXPECT_EQ(decoded("9007199254740993"), PropertyList(std::int64_t{9007199254740993}));
  EXPECT_EQ(decoded("9223372036854775807"), PropertyList(Integers::max()));
  EXPECT_EQ(decoded("-9223372036854775808"), PropertyList(Integers::min()));
}

TEST(JsonConformance, OtherNumbersAreReals) {
  EXPECT_EQ(decoded("1.0"), PropertyList(1.0));
  EXPECT_EQ(decoded("0.0"), PropertyList(0.0));
  EXPECT_EQ(decoded("1e2"), PropertyList(100.0));
  EXPECT_EQ(decoded("1E+2"), PropertyList(100.0));
  EXPECT_EQ(decoded("-2.5e-1"), PropertyList(-0.25));
  EXPECT_EQ(decoded("0.69"), PropertyList(0.69));
  EXPECT_EQ(decoded("9223372036854775808"), PropertyList(9223372036854775808.0));
  EXPECT_EQ(decoded("-9223372036854775809"), PropertyList(-9223372036854775808.0));
  EXPECT_EQ(decoded("18446744073709551616"), PropertyList(18446744073709551616.0));
  EXPECT_EQ(decoded(repeated("10", 50)), PropertyList(1.0101010101010101e99));
  EXPECT_EQ(decoded(std::string("0.1").append(1000, '0')), PropertyList(0.1));
}

TEST(JsonConformance, EscapesAreUnderstood) {
  EXPECT_EQ(decoded(R"("\"\\\/\b\f\n\r\t")"), PropertyList("\"\\/\b\f\n\r\t"));
  EXPECT_EQ(decoded(R"("\u0041\u00e9\u00E9\u05d0")"), PropertyList("A\u00E9\u00E9\u05D0"));
  EXPECT_EQ(decoded(R"("\ud83d\ude00\uDBFF\uDFFF")"), PropertyList("\U0001F600\U0010FFFF"));
  EXPECT_EQ(decoded(R"("a\u0000b")"), PropertyList(std::string("a\0b", 3)));
}

TEST(JsonConformance, WhiteSpaceBetweenTokensHasNoMeaning) {
  EXPECT_EQ(decodeJson(" \t\r\n[ 1 ,\n2 ] \t\r\n"), PropertyList(Array{1, 2}));
  EXPECT_EQ(decodeJson("{ \"a\" : [ ] , \"b\" : { } }"),
            PropertyList(Dictionary{{"a", Array{}}, {"b", Dictionary{}}}));
}

TEST(JsonConformance, TextThatIsNoJsonIsNothing) {
  for (const std::string_view text : {"",
                                      " ",
                                      "[",
                                      "]",
                                      "{",
                                      "}",
                                      "[1",
                                      "[1,",
                                      "[1,]",
                                      "[,1]",
                                      "[,]",
                                      "[1 2]",
                                      "[1,,2]",
                                      "[]]",
                                      "[] x",
                                      "[][]",
                                      "[1}",
                                      "{]",
                                      "{,}",
                                      "{\"a\"}",
                                      "{\"a\":}",
                                      "{\"a\":1,}",
                                      "{\"a\" 1}",
                                      "{a:1}",
                                      "{'a':1}",
                                      "{1:1}",
                                      "{null:1}",
                                      "{\"a\":1 \"b\":2}",
                                      "{\"a\":1,,\"b\":2}",
                                      "{\"a\"::1}",
                                      "[True]",
                                      "[TRUE]",
                                      "[nul]",
                                      "[nulll]",
                                      "[undefined]",
                                      "[NaN]",
                                      "[Infinity]",
                                      "[-Infinity]",
                                      "['a']",
                                      "[a]",
                                      "// x\n[]",
                                      "[/* x */]",
                                      "[1]#",
                                      "\xC2\xA0[]",
                                      "[\f]",
                                      "[\v1]"}) {
    EXPECT_EQ(decodeJson(text), std::nullopt) << text;
  }
  EXPECT_EQ(decodeJson(std::string_view("[]\0", 3)), std::nullopt);
  EXPECT_EQ(decodeJson(std::string_view("[1\0]", 4)), std::nullopt);
}

TEST(JsonConformance, NumbersAreExactlyThoseOfJson) {
  for (const char* text : {"01",   "-01",  "00",    "1.",   ".5",   "-.5",      "+1",  "-",
                           "--1",  "1e",   "1e+",   "1E-",  "1.e2", "0x1F",     "0b1", "1_000",
                           "1,5e", "1 e2", "1e2.5", "1..2", "- 1",  "\xD9\xA1", "1f",  "1e5x"}) {
    EXPECT_EQ(decoded(text), PropertyList("invalid")) << text;
  }
}

TEST(JsonConformance, StringsAreExactlyThoseOfJson) {
  for (const char* text : {R"(")", R"("a)", R"("\")", R"("\q")", R"("\x41")", R"("\0")", R"("\u")",
                           R"("\u12")", R"("\u12G4")", R"("\u-123")", R"("\u 123")", R"("\U0041")",
                           "\"\n\"", "\"\t\"", "\"\x01\"", "\"\x1F\"", "\"a\" \"b\"", "\"a\"b"}) {
    EXPECT_EQ(decoded(text), PropertyList("invalid")) << text;
  }
  for (const std::string& bytes : malformedUtf8Samples()) {
    EXPECT_EQ(decoded("\"" + bytes + "\""), PropertyList("invalid"));
    EXPECT_EQ(decodeJson("{\"" + bytes + "\":1}"), std::nullopt);
  }
}

TEST(JsonConformance, HalfASurrogatePairNeverBecomesMalformedText) {
  for (const char* text : {R"("\ud800")", R"("\udc00")", R"("\ud800\ud800")", R"("\ud800a")",
                           R"("\ud800\n")", R"("\udc00\ud800")", R"("\ud800\u0041")"}) {
    const PropertyList value = decoded(text);
    ASSERT_TRUE(value.asString()) << text;
    EXPECT_TRUE(isWellFormedUtf8(*value.asString())) << text;
  }
}

// Hostile text must neither crash nor hang the parser.

TEST(JsonConformance, ATruncatedTextIsNothing) {
  const std::string text =
      R"({"a":[1,-2.5e3,true,false,null],"b\u00e9":"\ud83d\ude00 x","c":{"d":{}}})";
  ASSERT_TRUE(decodeJson(text));
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_EQ(decodeJson(std::string_view(text).substr(0, length)), std::nullopt) << length;
  }
}

TEST(JsonConformance, ChangedBytesAreSurvived) {
  const std::string original = R"({"a":[1,-2.5e3,true,null],"b\u00e9":"\ud83d\ude00 x"})";
  int valid = 0;
  for (std::size_t at = 0; at < original.size(); ++at) {
    for (int change = 0; change < 256; ++change) {
      std::string text = original;
      text[at] = static_cast<char>(change);
      if (decodeJson(text)) valid += 1;
    }
  }
  EXPECT_GT(valid, 0);
}

TEST(JsonConformance, AMillionLevelsAreSurvived) {
  constexpr std::size_t kDepth = 1000000;
  EXPECT_EQ(decodeJson(repeated("[", kDepth)), std::nullopt);
  EXPECT_EQ(decodeJson(repeated("{\"a\":", kDepth)), std::nullopt);
  const auto closed = decodeJson(repeated("[", kDepth) + repeated("]", kDepth));
  EXPECT_TRUE(!closed || closed->asArray());
}

TEST(JsonConformance, ManyMembersAreReadInTheirOwnTime) {
  std::string text = "{";
  for (int i = 0; i < 100000; ++i) text.append("\"").append(std::to_string(i)).append("\":[],");
  text += "\"last\":1}";
  const auto value = decodeJson(text);
  ASSERT_TRUE(value && value->asDictionary());
  EXPECT_EQ(value->asDictionary()->size(), 100001U);
}

// Surroundings

TEST(JsonConformance, TheLocaleOfTheProcessDoesNotMatter) {
  const OtherLocale locale;
  EXPECT_EQ(throughJson(0.69), PropertyList(0.69));
  EXPECT_EQ(throughJson(1234567.5), PropertyList(1234567.5));
  EXPECT_EQ(throughJson(1234567), PropertyList(1234567));
}

TEST(JsonConformance, AnyThreadMayUseIt) {
  const PropertyList value = Dictionary{{"a", Array{1, 0.69, "\u00E9", true, PropertyList()}}};
  EXPECT_TRUE(holdsOnFourThreads(200, [&value] { return throughJson(value) == value; }));
}

}  // namespace
}  // namespace vembrix
