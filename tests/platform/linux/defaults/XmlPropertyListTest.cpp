#include "platform/linux/defaults/XmlPropertyList.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "platform/conformance/OtherLocale.h"
#include "platform/conformance/TextSamples.h"
#include "platform/linux/defaults/XmlSamples.h"
#include "platform/portable/NestingLimit.h"
#include "support/Threads.h"

namespace vembrix {
namespace {

using Array = PropertyList::Array;
using Data = PropertyList::Data;
using Date = PropertyList::Date;
using Dictionary = PropertyList::Dictionary;
using Reals = std::numeric_limits<double>;
using Integers = std::numeric_limits<std::int64_t>;

// Round trips

TEST(XmlPropertyListTest, ScalarsComeBack) {
  for (const PropertyList& value :
       {PropertyList(true), PropertyList(false), PropertyList(0), PropertyList(-1),
        PropertyList(std::int64_t{9007199254740993}), PropertyList(Integers::max()),
        PropertyList(Integers::min()), PropertyList(0.1), PropertyList(1.0 / 3),
        PropertyList(1e300), PropertyList(Reals::max()), PropertyList(Reals::lowest()),
        PropertyList(Reals::denorm_min()), PropertyList(std::nextafter(1.0, 2.0)),
        PropertyList(Reals::infinity()), PropertyList(-Reals::infinity()), PropertyList(-0.0),
        PropertyList(Data{}), PropertyList(Data(1000, 0xA5))}) {
    EXPECT_EQ(throughXml(value), value);
  }
  const PropertyList nan = throughXml(Reals::quiet_NaN());
  ASSERT_TRUE(nan.asReal());
  EXPECT_TRUE(std::isnan(*nan.asReal()));
}

TEST(XmlPropertyListTest, TextsComeBack) {
  std::vector<std::string> texts = textSamples();
  texts.insert(texts.end(),
               {"", " ", " a ", "\t", "\n", "\r", "a\r\nb\rc\nd", "<", "&amp;", "&#65;", "]]>",
                "\"'", "-->", "</string>", "%s %1", repeated("<&\xF0\x9F\x98\x80> ", 20000)});
  for (const std::string& text : texts) {
    EXPECT_TRUE(throughXml(text) == PropertyList(text)) << text.substr(0, 40);
    const PropertyList keyed = Dictionary{{text, 1}};
    EXPECT_TRUE(throughXml(keyed) == keyed) << text.substr(0, 40);
  }
}

TEST(XmlPropertyListTest, DatesComeBackToTheMillisecond) {
  for (const double seconds : {0.0, -1.0, 59.0, 700000000.0, -700000000.25, 1000.125, 99878400.0,
                               // The first second of year 1 and the distant future of macOS.
                               -63113904000.0, 63113904000.0}) {
    EXPECT_EQ(throughXml(Date{seconds}), PropertyList(Date{seconds})) << seconds;
  }
  for (const double seconds : {Reals::quiet_NaN(), Reals::infinity(), 1e15, -1e11}) {
    EXPECT_EQ(writePropertyList(Date{seconds}), std::nullopt) << seconds;
  }
}

TEST(XmlPropertyListTest, ContainersComeBack) {
  for (const PropertyList& value :
       {PropertyList(Array{}), PropertyList(Dictionary{}), PropertyList(everything()),
        PropertyList(Array{Array{}, Dictionary{{"empty", Array{}}}, Dictionary{}})}) {
    EXPECT_EQ(throughXml(value), value);
  }
}

TEST(XmlPropertyListTest, TheFormIsTheUsualOne) {
  EXPECT_EQ(writePropertyList(Dictionary{{"a", Array{-1, "Mail &"}}}),
            R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
	<dict>
		<key>a</key>
		<array>
			<integer>-1</integer>
			<string>Mail &amp;</string>
		</array>
	</dict>
</plist>
)");
}

TEST(XmlPropertyListTest, WhatHasNoFormIsNotWritten) {
  for (const PropertyList& value :
       {PropertyList(), PropertyList(Array{1, PropertyList(), 2}),
        PropertyList(Dictionary{{"a", Array{Dictionary{{"b", PropertyList()}}}}})}) {
    EXPECT_EQ(writePropertyList(value), std::nullopt);
  }
}

TEST(XmlPropertyListTest, WhatXmlCannotHoldIsReplaced) {
  for (char c = 0; c < 0x20; ++c) {
    if (c == '\t' || c == '\n' || c == '\r') continue;
    EXPECT_EQ(throughXml(std::string("a") + c + "b"), PropertyList("a\uFFFDb"));
  }
  EXPECT_EQ(throughXml("a\uFFFEb\uFFFF"), PropertyList("a\uFFFDb\uFFFD"));
  for (const std::string& bytes : malformedUtf8Samples()) {
    const std::optional<std::string> xml = writePropertyList(Dictionary{{bytes, bytes}});
    ASSERT_TRUE(xml);
    EXPECT_TRUE(isWellFormedUtf8(*xml));
    EXPECT_TRUE(readBytes(*xml).asDictionary());
  }
}

// Reading

TEST(XmlPropertyListTest, TheXmlOfOtherProgramsIsRead) {
  const std::string content = R"(<dict>
  <!-- comments may stand anywhere, <dict> -->
	<key>string</key> <string>a&amp;b&lt;c&gt;d&quot;e&apos;f&#65;&#x1F600;</string>
  <key>cdata</key><string><![CDATA[<a> & ]]>b</string>
  <key>empty</key><string/>
	<key>integer</key><integer> 42 </integer>
	<key>hexadecimal</key><integer>0xFF</integer>
	<key>real</key><real>+1.5e2</real>
	<key>infinity</key><real>+infinity</real>
	<key>date</key><date>2001-01-01T00:01:00Z</date>
	<key>data</key><data>
	AQID
	BA==
	</data>
	<key>yes</key><true/><key>no</key><false></false>
	<key>twice</key><true/><key>twice</key><integer>2</integer>
	<key>array</key><array><integer>1</integer><array/><dict/></array>
</dict>)";
  const PropertyList expected = Dictionary{{"string", "a&b<c>d\"e'fA\U0001F600"},
                                           {"cdata", "<a> & b"},
                                           {"empty", ""},
                                           {"integer", 42},
                                           {"hexadecimal", 255},
                                           {"real", 150.0},
                                           {"infinity", Reals::infinity()},
                                           {"date", Date{60}},
                                           {"data", Data{1, 2, 3, 4}},
                                           {"yes", true},
                                           {"no", false},
                                           {"twice", 2},
                                           {"array", Array{1, Array{}, Dictionary{}}}};
  EXPECT_EQ(readElement(content), expected);
  EXPECT_EQ(readBytes("\xEF\xBB\xBF<dict><key>a</key><true/></dict>"),
            PropertyList(Dictionary{{"a", true}}));
  EXPECT_EQ(readBytes("<?xml version=\"1.0\"?>\r\n<plist><dict/></plist>\r\n"),
            PropertyList(Dictionary{}));
}

const std::vector<std::string>& elementsThatMeanNothing() {
  static const std::vector<std::string> elements = {"<integer></integer>",
                                                    "<integer/>",
                                                    "<integer>abc</integer>",
                                                    "<integer>1.5</integer>",
                                                    "<integer>12 34</integer>",
                                                    "<integer>18446744073709551616</integer>",
                                                    "<integer>-9223372036854775809</integer>",
                                                    "<real></real>",
                                                    "<real>abc</real>",
                                                    "<real>1,5</real>",
                                                    "<real>1e400</real>",
                                                    "<real>1e-400</real>",
                                                    "<date></date>",
                                                    "<date>yesterday</date>",
                                                    "<date>2001-02-30T00:00:00Z</date>",
                                                    "<date>0000-12-30T00:00:00Z</date>",
                                                    "<data>%%%%</data>",
                                                    "<true>yes</true>",
                                                    "<string>a<b/></string>",
                                                    "<string><string>a</string></string>",
                                                    "<String>a</String>",
                                                    "<strin>a</strin>",
                                                    "<unknown attribute='1'><dict/></unknown>",
                                                    "<Dict><key>a</key><true/></Dict>"};
  return elements;
}

TEST(XmlPropertyListTest, WhatMeansNothingCostsItselfAlone) {
  for (const std::string& element : elementsThatMeanNothing()) {
    EXPECT_EQ(readElement(joined({"<dict><key>a</key><true/><key>bad</key>", element,
                                  "<key>b</key><dict><key>bad</key>", element,
                                  "<key>c</key><string>kept</string></dict></dict>"})),
              PropertyList(Dictionary{{"a", true}, {"b", Dictionary{{"c", "kept"}}}}))
        << element;
    EXPECT_EQ(readElement("<array><true/>" + element + "<false/></array>"),
              PropertyList(Array{true, PropertyList(), false}))
        << element;
  }
}

TEST(XmlPropertyListTest, AKeyWithoutAValueCostsItselfAlone) {
  const PropertyList expected = Dictionary{{"a", 1}};
  for (const char* content :
       {"<dict><key>b</key><key>a</key><integer>1</integer></dict>",
        "<dict><key>a</key><integer>1</integer><key>b</key></dict>",
        "<dict><integer>2</integer><key>a</key><integer>1</integer><integer>2</integer></dict>",
        "<dict>text<key>a</key>text<integer>1</integer>text</dict>",
        "<dict><key>b<i/></key><true/><key>a</key><integer>1</integer></dict>"}) {
    EXPECT_EQ(readElement(content), expected) << content;
  }
}

TEST(XmlPropertyListTest, NumbersBeyondSignedOnesAreReals) {
  EXPECT_EQ(readElement("<integer>9223372036854775808</integer>"),
            PropertyList(9223372036854775808.0));
  EXPECT_EQ(readElement("<integer>18446744073709551615</integer>"),
            PropertyList(18446744073709551615.0));
}

TEST(XmlPropertyListTest, OtherBytesAreMalformed) {
  for (const std::string_view bytes :
       {"", " ", "hello", "{ a = b; }", "<", "<?xml", "<plist", "<plist>", "<plist><dict></plist>",
        "<plist><dict/></plist><plist/>",
        "<plist><dict><key>a</key><string>&x;</string></dict></plist>",
        "<plist><string>&#0;</string></plist>", "<plist><string>a & b</string></plist>",
        "\xFF\xFE\x00\x00", "<plist><string>\xE9</string></plist>"}) {
    EXPECT_EQ(readBytes(bytes), PropertyList("malformed")) << bytes;
  }
  EXPECT_EQ(readBytes(std::string(1000, '\0')), PropertyList("malformed"));
}

TEST(XmlPropertyListTest, TheBinaryFormIsToldApart) {
  EXPECT_EQ(readBytes("bplist00"), PropertyList("binary"));
  EXPECT_EQ(readBytes("bplist00" + std::string(1000, '\xFF')), PropertyList("binary"));
  EXPECT_EQ(changedPropertyList("bplist00", "Key", 1), std::nullopt);
}

TEST(XmlPropertyListTest, ATruncatedListIsMalformed) {
  const std::string xml = *writePropertyList(everything());
  for (std::size_t length = 0; length < xml.rfind("</plist>") + 8; ++length) {
    EXPECT_EQ(readBytes(xml.substr(0, length)), PropertyList("malformed")) << length;
  }
}

// Changing

std::string changed(std::string_view content, std::string_view key, const PropertyList& value) {
  const std::string before = document("\x1");
  const std::string whole =
      changedPropertyList(document(content), key, value).value_or(document("unchangeable"));
  const std::size_t start = before.find('\x1');
  return whole.substr(start, whole.size() - (before.size() - 1));
}

TEST(XmlPropertyListTest, AChangeLeavesAllOtherBytesAlone) {
  for (const std::string& element : elementsThatMeanNothing()) {
    const std::string first =
        joined({"<dict>\r\n  <!-- <key>Key</key> --> <key>bad</key>  ", element, " stray"});
    const std::string last =
        joined({"<key>large</key><integer>18446744073709551615</integer>"
                "<key>date</key><date>2001-01-01T00:00:00.123456Z</date><key>end</key>",
                element, "\n</dict>"});
    const std::string whole = joined({first, "\n\t<key>Key</key><true/>", last});
    EXPECT_EQ(changed(whole, "Key", "new & old"),
              joined({first, "\n\t\t<key>Key</key>\n\t\t<string>new &amp; old</string>", last}));
    EXPECT_EQ(changed(whole, "Key", {}), joined({first, last}));
    EXPECT_EQ(changed(joined({"<dict><key>bad</key>", element, "</dict>"}), "bad", 1),
              "<dict>\n\t\t<key>bad</key>\n\t\t<integer>1</integer></dict>");
  }
}

TEST(XmlPropertyListTest, AChangeAddsAtTheEnd) {
  EXPECT_EQ(changed("<dict>\n<key>a</key><true/>\n</dict>", "b", false),
            "<dict>\n<key>a</key><true/>\n\t\t<key>b</key>\n\t\t<false/>\n</dict>");
  EXPECT_EQ(changed("<dict/>", "b", 1),
            "<dict>\n\t\t<key>b</key>\n\t\t<integer>1</integer>\n\t</dict>");
  EXPECT_EQ(changed("<dict></dict>", "%1", "%2"),
            "<dict>\n\t\t<key>%1</key>\n\t\t<string>%2</string></dict>");
  EXPECT_EQ(changed("<dict/>", "b", {}), "<dict/>");
}

TEST(XmlPropertyListTest, AChangeReplacesAllOfAKeyThatOccursTwice) {
  const std::string twice =
      "<dict><key>a</key><true/><key>b</key><true/><key>a</key><false/></dict>";
  EXPECT_EQ(changed(twice, "a", 1),
            "<dict><key>b</key><true/>\n\t\t<key>a</key>\n\t\t<integer>1</integer></dict>");
  EXPECT_EQ(changed(twice, "a", {}), "<dict><key>b</key><true/></dict>");
}

TEST(XmlPropertyListTest, ChangesOfAllKindsAreReadBack) {
  std::string bytes = *writePropertyList(Dictionary{});
  for (const auto& [key, value] : everything()) bytes = *changedPropertyList(bytes, key, value);
  EXPECT_EQ(bytes, *writePropertyList(everything())) << "as if written at once";
  for (const auto& [key, value] : everything()) bytes = *changedPropertyList(bytes, key, {});
  EXPECT_EQ(readBytes(bytes), PropertyList(Dictionary{}));
}

TEST(XmlPropertyListTest, OnlyADictionaryCanBeChanged) {
  for (const char* content : {"<array/>", "<string>a</string>", "<Dict/>", ""}) {
    EXPECT_EQ(changedPropertyList(document(content), "a", 1), std::nullopt) << content;
  }
}

// Surroundings

TEST(XmlPropertyListTest, TheLocaleOfTheProcessDoesNotMatter) {
  const OtherLocale locale;
  EXPECT_EQ(throughXml(1234567.5), PropertyList(1234567.5));
  EXPECT_EQ(throughXml(1234567), PropertyList(1234567));
  EXPECT_EQ(readElement("<real>0.5</real>"), PropertyList(0.5));
}

TEST(XmlPropertyListTest, AnyThreadMayUseIt) {
  const PropertyList value = everything();
  EXPECT_TRUE(holdsOnFourThreads(50, [&value] { return throughXml(value) == value; }));
}

}  // namespace
}  // namespace vembrix
