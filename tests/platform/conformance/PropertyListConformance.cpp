#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <thread>

#include "platform/PropertyListSerialization.h"
#include "platform/conformance/BinaryPropertyListBuilder.h"
#include "platform/conformance/OtherLocale.h"
#include "platform/conformance/TextSamples.h"

namespace vembrix {
namespace {

using Array = PropertyList::Array;
using Data = PropertyList::Data;
using Date = PropertyList::Date;
using Dictionary = PropertyList::Dictionary;
using Reals = std::numeric_limits<double>;
using Integers = std::numeric_limits<std::int64_t>;

/// What remains of a value on the way through its XML form; null when it has
/// none or that cannot be read.
PropertyList throughXml(const PropertyList& value) {
  const std::optional<std::string> xml = xmlPropertyList(value);
  if (!xml) return {};
  return parsePropertyList(*xml).value_or(PropertyList());
}

std::string document(std::string_view content) {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
)" + std::string(content) +
         "\n</plist>\n";
}

std::optional<PropertyList> parseElement(std::string_view content) {
  return parsePropertyList(document(content));
}

std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  result.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) result += text;
  return result;
}

Data allBytes() {
  Data bytes;
  for (int i = 0; i < 256; ++i) bytes.push_back(static_cast<std::uint8_t>(i));
  return bytes;
}

Dictionary everything() {
  return {{"array", Array{1, "two", 3.5, Array{}, Dictionary{}}},
          {"data", allBytes()},
          {"date", Date{700000000}},
          {"dictionary", Dictionary{{"inner", Dictionary{{"innermost", false}}}}},
          {"integer", -42},
          {"real", 0.78},
          {"string", "Mail \U0001F4EC & <more>"},
          {"true", true}};
}

// Round trips

TEST(PropertyListConformance, BooleansComeBack) {
  EXPECT_EQ(throughXml(true), PropertyList(true));
  EXPECT_EQ(throughXml(false), PropertyList(false));
}

TEST(PropertyListConformance, IntegersOfAllSizesComeBack) {
  for (const std::int64_t value :
       {std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}, std::int64_t{255}, std::int64_t{-129},
        std::int64_t{2147483648}, std::int64_t{-2147483649}, std::int64_t{9007199254740993},
        Integers::max(), Integers::min(), Integers::min() + 1}) {
    EXPECT_EQ(throughXml(value), PropertyList(value)) << value;
  }
}

TEST(PropertyListConformance, RealsComeBackToTheLastBit) {
  for (const double value : {0.0,
                             0.1,
                             0.78,
                             1.0 / 3,
                             160.0,
                             -0.5,
                             1e-10,
                             123456789012345678.0,
                             1e22,
                             1e300,
                             9.5367431640625e-07,
                             Reals::max(),
                             Reals::lowest(),
                             Reals::min(),
                             Reals::denorm_min(),
                             Reals::epsilon(),
                             std::nextafter(1.0, 2.0),
                             Reals::infinity(),
                             -Reals::infinity(),
                             -0.0}) {
    EXPECT_EQ(throughXml(value), PropertyList(value)) << value;
  }
  const PropertyList nan = throughXml(Reals::quiet_NaN());
  ASSERT_TRUE(nan.asReal());
  EXPECT_TRUE(std::isnan(*nan.asReal()));
}

TEST(PropertyListConformance, StringsOfAllScriptsComeBack) {
  for (const std::string& text : textSamples()) {
    EXPECT_EQ(throughXml(text), PropertyList(text)) << text;
  }
}

TEST(PropertyListConformance, MarkupInStringsIsText) {
  for (const char* text :
       {"<", ">", "&", "\"", "'", "&amp;", "&#65;", "]]>", "<![CDATA[x]]>", "<!-- x -->", "-->",
        "</string>", "<key>a</key>", "<?xml version=\"1.0\"?>", "%s %n", "\\u0041"}) {
    EXPECT_EQ(throughXml(text), PropertyList(text)) << text;
  }
}

TEST(PropertyListConformance, WhiteSpaceInStringsIsKept) {
  for (const char* text : {"", " ", "  ", " a ", "\t", "\n", "\na\n", "\r", "\r\n", "a\r\nb\rc\nd",
                           "\t\n\r ", "a  b", "\xC2\xA0"}) {
    EXPECT_EQ(throughXml(text), PropertyList(text)) << testing::PrintToString(text);
  }
}

TEST(PropertyListConformance, ALongStringComesBack) {
  const std::string text = repeated("<&\xF0\x9F\x98\x80> ", 20000);
  EXPECT_TRUE(throughXml(text) == PropertyList(text));
}

TEST(PropertyListConformance, DatesComeBackToTheSecond) {
  for (const double seconds : {0.0, 1.0, -1.0, 59.0, 86400.0, 700000000.0, -700000000.0,
                               // 2100-03-01, 2001-02-28 and a leap day.
                               3129062400.0, 5011200.0, 99878400.0,
                               // The distant past and the distant future of other systems.
                               -63114076800.0, 63113904000.0}) {
    EXPECT_EQ(throughXml(Date{seconds}), PropertyList(Date{seconds})) << seconds;
  }
  const PropertyList withFraction = throughXml(Date{1000.25});
  ASSERT_TRUE(withFraction.asDate());
  EXPECT_NEAR(withFraction.asDate()->seconds, 1000.25, 1);
}

TEST(PropertyListConformance, DataOfAllLengthsComeBack) {
  Data data;
  for (int length = 0; length < 200; ++length) {
    EXPECT_EQ(throughXml(data), PropertyList(data)) << length;
    data.push_back(static_cast<std::uint8_t>(length * 37));
  }
  EXPECT_EQ(throughXml(allBytes()), PropertyList(allBytes()));
  EXPECT_TRUE(throughXml(Data(100000, 0xA5)) == PropertyList(Data(100000, 0xA5)));
}

TEST(PropertyListConformance, EmptyContainersComeBack) {
  EXPECT_EQ(throughXml(Array{}), PropertyList(Array{}));
  EXPECT_EQ(throughXml(Dictionary{}), PropertyList(Dictionary{}));
  const PropertyList nested = Array{Array{}, Dictionary{{"empty", Array{}}}, Dictionary{}};
  EXPECT_EQ(throughXml(nested), nested);
}

TEST(PropertyListConformance, NestedContainersComeBack) {
  EXPECT_EQ(throughXml(everything()), PropertyList(everything()));
  PropertyList deep = "bottom";
  for (int i = 0; i < 50; ++i) deep = Dictionary{{"a", Array{deep}}};
  EXPECT_EQ(throughXml(deep), deep);
}

TEST(PropertyListConformance, KeysAreAnyStrings) {
  Dictionary dictionary{{"", 1}, {" ", 2}, {"<&>", 3}, {"a.b", 4}, {"\n", 5}};
  for (const std::string& text : textSamples()) dictionary.insert_or_assign(text, text);
  EXPECT_EQ(throughXml(dictionary), PropertyList(dictionary));
}

TEST(PropertyListConformance, ManyEntriesComeBack) {
  Dictionary dictionary;
  for (int i = 0; i < 2000; ++i) dictionary.emplace("key " + std::to_string(i), i);
  EXPECT_TRUE(throughXml(dictionary) == PropertyList(dictionary));
}

// The XML form

TEST(PropertyListConformance, TheFormIsXmlVersion1InUtf8) {
  const std::optional<std::string> xml = xmlPropertyList(everything());
  ASSERT_TRUE(xml);
  EXPECT_THAT(*xml, testing::StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
  EXPECT_THAT(*xml, testing::HasSubstr("<plist version=\"1.0\">"));
  EXPECT_THAT(*xml, testing::HasSubstr("<key>integer</key>"));
  EXPECT_THAT(*xml, testing::HasSubstr("<integer>-42</integer>"));
  EXPECT_THAT(*xml, testing::HasSubstr("\U0001F4EC &amp; &lt;more"));
  EXPECT_TRUE(isWellFormedUtf8(*xml));
}

TEST(PropertyListConformance, NullHasNoForm) {
  EXPECT_EQ(xmlPropertyList({}), std::nullopt);
}

TEST(PropertyListConformance, AValueThatHoldsANullAnywhereHasNoForm) {
  EXPECT_EQ(xmlPropertyList(Array{PropertyList()}), std::nullopt);
  EXPECT_EQ(xmlPropertyList(Array{1, PropertyList(), 2}), std::nullopt);
  EXPECT_EQ(xmlPropertyList(Dictionary{{"a", PropertyList()}}), std::nullopt);
  EXPECT_EQ(xmlPropertyList(Dictionary{{"a", Array{Dictionary{{"b", {}}}}}}), std::nullopt);
}

TEST(PropertyListConformance, CharactersThatXmlCannotHoldAreReplaced) {
  for (char c = 0; c < 0x20; ++c) {
    if (c == '\t' || c == '\n' || c == '\r') continue;
    const std::string text = std::string("a") + c + "b";
    EXPECT_EQ(throughXml(text), PropertyList("a\uFFFDb")) << static_cast<int>(c);
    EXPECT_EQ(throughXml(Dictionary{{text, 1}}), PropertyList(Dictionary{{"a\uFFFDb", 1}}));
  }
  EXPECT_EQ(throughXml("a\uFFFEb"), PropertyList("a\uFFFDb"));
  EXPECT_EQ(throughXml("a\uFFFFb"), PropertyList("a\uFFFDb"));
}

TEST(PropertyListConformance, BytesThatAreNotUtf8AreReplaced) {
  EXPECT_EQ(throughXml("a\xFF"
                       "b"),
            PropertyList("a\uFFFDb"));
  EXPECT_EQ(throughXml("a\x80"
                       "b"),
            PropertyList("a\uFFFDb"));
  for (const std::string& bytes : malformedUtf8Samples()) {
    const PropertyList read = throughXml("<" + bytes + ">");
    ASSERT_TRUE(read.asString());
    EXPECT_THAT(*read.asString(), testing::StartsWith("<\uFFFD"));
    EXPECT_THAT(*read.asString(), testing::EndsWith(">"));
    EXPECT_TRUE(isWellFormedUtf8(*read.asString()));
    const std::optional<std::string> keyed = xmlPropertyList(Dictionary{{bytes, 1}});
    ASSERT_TRUE(keyed);
    EXPECT_TRUE(isWellFormedUtf8(*keyed));
  }
}

// Reading

TEST(PropertyListConformance, TheXmlOfOtherProgramsIsRead) {
  const std::string content = R"(<dict>
  <!-- comments may stand anywhere -->
	<key>string</key> <string>a&amp;b&lt;c&gt;d&quot;e&apos;f&#65;&#x1F600;</string>
  <key>cdata</key><string><![CDATA[<a> & ]]>b</string>
  <key>empty</key><string/>
	<key>integer</key><integer> 42 </integer>
	<key>negative</key><integer>-7</integer>
	<key>real</key><real>1.5e2</real>
	<key>date</key><date>2001-01-01T00:01:00Z</date>
	<key>data</key><data>
	AQID
	BA==
	</data>
	<key>yes</key><true/><key>no</key><false></false>
	<key>array</key><array><integer>1</integer><array/><dict/></array>
</dict>)";
  const PropertyList expected = Dictionary{{"string", "a&b<c>d\"e'fA\U0001F600"},
                                           {"cdata", "<a> & b"},
                                           {"empty", ""},
                                           {"integer", 42},
                                           {"negative", -7},
                                           {"real", 150.0},
                                           {"date", Date{60}},
                                           {"data", Data{1, 2, 3, 4}},
                                           {"yes", true},
                                           {"no", false},
                                           {"array", Array{1, Array{}, Dictionary{}}}};
  EXPECT_EQ(parseElement(content), expected);
}

TEST(PropertyListConformance, XmlNeedsNoProlog) {
  EXPECT_EQ(parsePropertyList("<plist version=\"1.0\"><string>a</string></plist>"),
            PropertyList("a"));
  EXPECT_EQ(parsePropertyList("<?xml version=\"1.0\"?>\r\n<plist><dict/></plist>\r\n"),
            PropertyList(Dictionary{}));
}

TEST(PropertyListConformance, TheBinaryFormIsRead) {
  BinaryPropertyListBuilder binary;
  const auto integers =
      binary.array({binary.integer(0, 1), binary.integer(255, 1), binary.integer(65535, 2),
                    binary.integer(4294967295, 4), binary.integer(Integers::max(), 8),
                    binary.integer(-1, 8), binary.integer(Integers::min(), 8)});
  const auto scalars =
      binary.array({binary.boolean(true), binary.boolean(false), binary.real(0.78),
                    binary.date(60.0), binary.data({1, 2, 3}), binary.data(Data(300, 7))});
  const auto texts =
      binary.array({binary.ascii(""), binary.ascii("Mail"), binary.ascii(std::string(300, 'x')),
                    binary.utf16(u"\u00E9\u05D0\U0001F600")});
  const auto top = binary.dictionary({{binary.ascii("integers"), integers},
                                      {binary.ascii("scalars"), scalars},
                                      {binary.utf16(u"\u00FCber"), texts},
                                      {binary.ascii("empty"), binary.dictionary({})}});
  const PropertyList expected = Dictionary{
      {"integers",
       Array{0, 255, 65535, std::int64_t{4294967295}, Integers::max(), -1, Integers::min()}},
      {"scalars", Array{true, false, 0.78, Date{60}, Data{1, 2, 3}, Data(300, 7)}},
      {"\u00FCber", Array{"", "Mail", std::string(300, 'x'), "\u00E9\u05D0\U0001F600"}},
      {"empty", Dictionary{}}};
  EXPECT_EQ(parsePropertyList(binary.bytes(top)), expected);
}

TEST(PropertyListConformance, ABinaryListMayShareObjects) {
  BinaryPropertyListBuilder binary;
  const auto shared = binary.array({binary.ascii("twice")});
  EXPECT_EQ(parsePropertyList(binary.bytes(binary.array({shared, shared}))),
            PropertyList(Array{Array{"twice"}, Array{"twice"}}));
}

TEST(PropertyListConformance, OtherBytesAreNothing) {
  for (const std::string_view bytes : {"",
                                       " ",
                                       "\n",
                                       "hello",
                                       "{}",
                                       "[]",
                                       "{ a = b; }",
                                       "{\"a\":1}",
                                       "(1, 2)",
                                       "\"text\"",
                                       "bplist00",
                                       "bplist",
                                       "<",
                                       "<?xml",
                                       "<?xml version=\"1.0\"?>",
                                       "<html><body/></html>",
                                       "<plist",
                                       "<plist>",
                                       "<plist/>",
                                       "<plist></plist>",
                                       "\xFF\xFE\x00\x00",
                                       "PK\x03\x04"}) {
    EXPECT_EQ(parsePropertyList(bytes), std::nullopt) << bytes;
  }
  EXPECT_EQ(parsePropertyList(std::string(1000, '\0')), std::nullopt);
  EXPECT_EQ(parsePropertyList("bplist00" + std::string(1000, '\0')), std::nullopt);
  EXPECT_EQ(parsePropertyList("bplist00" + std::string(1000, '\xFF')), std::nullopt);
}

TEST(PropertyListConformance, XmlThatIsNoPropertyListIsNothing) {
  for (const char* content : {"",
                              "text",
                              "<unknown/>",
                              "<unknown>1</unknown>",
                              "<key>a</key>",
                              "<string>a",
                              "<string>a</integer>",
                              "<array><string>a</array></string>",
                              "<dict><key>a</key></dict>",
                              "<dict><string>a</string></dict>",
                              "<dict><key>a</key><key>b</key></dict>",
                              "<dict><true/></dict>",
                              "<array>text</array>",
                              "<dict>text</dict>",
                              "<integer>abc</integer>",
                              "<integer></integer>",
                              "<integer>1.5</integer>",
                              "<integer>12 34</integer>",
                              "<real>abc</real>",
                              "<real></real>",
                              "<date>yesterday</date>",
                              "<date></date>",
                              "<string>&unknown;</string>",
                              "<string>&#0;</string>",
                              "<string><b/></string>",
                              "<string>a & b</string>",
                              "</dict>",
                              "<Dict/>"}) {
    EXPECT_EQ(parseElement(content), std::nullopt) << content;
  }
}

// Hostile bytes: nothing here may crash, hang or run out of memory.

TEST(PropertyListConformance, ATruncatedXmlListIsNothing) {
  const std::string xml = *xmlPropertyList(everything());
  const std::size_t end = xml.rfind("</plist>") + 8;
  for (std::size_t length = 0; length < end; ++length) {
    EXPECT_EQ(parsePropertyList(xml.substr(0, length)), std::nullopt) << length;
  }
}

std::string sampleBinary() {
  BinaryPropertyListBuilder binary;
  const auto array = binary.array({binary.integer(-5, 8), binary.real(1.5), binary.date(7),
                                   binary.data(Data(20, 1)), binary.utf16(u"\u05D0\U0001F600")});
  return binary.bytes(
      binary.dictionary({{binary.ascii("array"), array},
                         {binary.ascii("long"), binary.ascii(std::string(40, 'y'))}}));
}

TEST(PropertyListConformance, ATruncatedBinaryListIsNothing) {
  const std::string binary = sampleBinary();
  ASSERT_TRUE(parsePropertyList(binary));
  for (std::size_t length = 0; length < binary.size(); ++length) {
    EXPECT_EQ(parsePropertyList(binary.substr(0, length)), std::nullopt) << length;
  }
}

TEST(PropertyListConformance, ChangedBytesAreSurvived) {
  for (const std::string& original : {sampleBinary(), *xmlPropertyList(everything())}) {
    std::size_t read = 0;
    for (std::size_t at = 0; at < original.size(); ++at) {
      for (const int change : {0x00, 0x01, 0x0F, 0x41, 0x7F, 0x80, 0xA1, 0xDF, 0xFF}) {
        std::string bytes = original;
        bytes[at] = static_cast<char>(change);
        if (const auto value = parsePropertyList(bytes)) read += value->isNull() ? 0 : 1;
      }
    }
    EXPECT_GT(read, 0U) << "a change within a string does no harm";
  }
}

TEST(PropertyListConformance, XmlNestedAMillionTimesIsSurvived) {
  constexpr std::size_t kDepth = 1000000;
  const std::string open = repeated("<array>", kDepth);
  EXPECT_EQ(parsePropertyList("<plist>" + open), std::nullopt);
  const auto closed = parseElement(open + repeated("</array>", kDepth));
  EXPECT_TRUE(!closed || closed->asArray());
  const auto dictionaries = parseElement(repeated("<dict><key>a</key>", kDepth) + "<true/>" +
                                         repeated("</dict>", kDepth));
  EXPECT_TRUE(!dictionaries || dictionaries->asDictionary());
}

TEST(PropertyListConformance, ABinaryListNestedALotIsSurvived) {
  BinaryPropertyListBuilder binary;
  auto object = binary.ascii("bottom");
  for (int i = 0; i < 300000; ++i) object = binary.array({object});
  const auto value = parsePropertyList(binary.bytes(object));
  EXPECT_TRUE(!value || value->asArray());
}

TEST(PropertyListConformance, ABinaryListThatContainsItselfIsNothing) {
  BinaryPropertyListBuilder direct;
  EXPECT_EQ(parsePropertyList(direct.bytes(direct.array({0, 0, 0}))), std::nullopt);
  BinaryPropertyListBuilder indirect;
  indirect.array({1, 1});
  indirect.dictionary({{2, 0}});
  indirect.ascii("key");
  EXPECT_EQ(parsePropertyList(indirect.bytes(0)), std::nullopt);
}

TEST(PropertyListConformance, FewBytesDoNotUnfoldToMoreThanMemoryHolds) {
  BinaryPropertyListBuilder wide;
  auto object = wide.ascii("lol");
  for (int i = 0; i < 40; ++i) object = wide.array({object, object, object, object, object});
  EXPECT_EQ(parsePropertyList(wide.bytes(object)), std::nullopt);

  BinaryPropertyListBuilder heavy;
  const auto weight = heavy.ascii(std::string(1 << 20, 'w'));
  EXPECT_EQ(parsePropertyList(heavy.bytes(heavy.array(std::vector(100000, weight)))), std::nullopt);
}

TEST(PropertyListConformance, EntitiesOfADocumentTypeDoNotUnfold) {
  std::string types = "<!DOCTYPE plist [<!ENTITY a0 \"lol\">";
  for (int i = 1; i < 20; ++i) {
    const std::string inner = "&a" + std::to_string(i - 1) + ";";
    types += "<!ENTITY a" + std::to_string(i) + " \"" + repeated(inner, 10) + "\">";
  }
  const auto value =
      parsePropertyList(types + "]><plist version=\"1.0\"><string>&a19;</string></plist>");
  EXPECT_TRUE(!value || value->asString()->size() < 1000);
}

TEST(PropertyListConformance, EntitiesReadNoOtherFile) {
  const std::string path = testing::TempDir() + "vembrix-entity-secret";
  std::ofstream(path) << "the secret";
  for (const std::string& declared :
       {"<!ENTITY x SYSTEM \"file://" + path + "\">", "<!ENTITY x SYSTEM \"" + path + "\">"}) {
    const auto value = parsePropertyList("<!DOCTYPE plist [" + declared +
                                         "]><plist version=\"1.0\"><string>&x;</string></plist>");
    EXPECT_TRUE(!value || value->asString()->find("secret") == std::string::npos);
  }
  std::remove(path.c_str());
}

TEST(PropertyListConformance, AStringOfMarkupIsReadInItsOwnTime) {
  // Quadratic work would take minutes here.
  const auto value = parseElement("<string>" + repeated("&lt;&amp;", 500000) + "</string>");
  ASSERT_TRUE(value && value->asString());
  EXPECT_EQ(value->asString()->size(), 1000000U);
}

// Surroundings

TEST(PropertyListConformance, TheLocaleOfTheProcessDoesNotMatter) {
  const OtherLocale locale;
  EXPECT_EQ(throughXml(0.78), PropertyList(0.78));
  EXPECT_EQ(throughXml(1234567.5), PropertyList(1234567.5));
  EXPECT_EQ(throughXml(1234567), PropertyList(1234567));
  EXPECT_EQ(parseElement("<real>0.5</real>"), PropertyList(0.5));
}

TEST(PropertyListConformance, AnyThreadMayUseIt) {
  const PropertyList value = everything();
  const std::string binary = sampleBinary();
  std::array<bool, 4> held{};
  std::vector<std::thread> threads;
  threads.reserve(held.size());
  for (bool& result : held) {
    threads.emplace_back([&value, &binary, &result] {
      result = true;
      for (int i = 0; i < 50; ++i) {
        result = result && throughXml(value) == value && parsePropertyList(binary).has_value();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(held, testing::Each(true));
}

}  // namespace
}  // namespace vembrix
