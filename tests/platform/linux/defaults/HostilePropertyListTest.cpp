// Bytes that no honest program writes.
#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <limits>

#include "platform/linux/defaults/XmlPropertyList.h"
#include "platform/linux/defaults/XmlSamples.h"
#include "platform/portable/NestingLimit.h"

namespace vembrix {
namespace {

using Array = PropertyList::Array;

TEST(XmlPropertyListTest, ChangedBytesAreSurvived) {
  const std::string original = *writePropertyList(everything());
  for (std::size_t at = 0; at < original.size(); ++at) {
    for (const char change : {'\0', '\1', '<', '>', '"', '/', '[', '\x80', '\xFF'}) {
      std::string bytes = original;
      bytes[at] = change;
      const PropertyList read = readBytes(bytes);
      const std::optional<std::string> changed = changedPropertyList(bytes, "Key", 1);
      EXPECT_EQ(changed.has_value(), read.asDictionary() != nullptr) << bytes;
      if (changed) {
        EXPECT_EQ(readBytes(*changed)["Key"], PropertyList(1)) << bytes;
      }
    }
  }
}

TEST(XmlPropertyListTest, ADocumentTypeThatDeclaresSomethingIsRefused) {
  const std::string list =
      "<plist version=\"1.0\"><dict><key>a</key><string>x</string></dict></plist>";
  for (const char* type :
       {"<!DOCTYPE plist [<!ENTITY a \"b\">]>", "<!DOCTYPE plist []>",
        "<!DOCTYPE plist PUBLIC \"a\" \"b\" [<!ATTLIST plist x CDATA \"y\">]>",
        "<!DOCTYPE plist SYSTEM '>' [<!ENTITY % p SYSTEM 'file:///etc/passwd'>%p;]>"}) {
    EXPECT_EQ(readBytes(type + list), PropertyList("malformed")) << type;
    EXPECT_EQ(changedPropertyList(type + list, "Key", 1), std::nullopt) << type;
  }
  EXPECT_TRUE(readBytes("<!DOCTYPE plist SYSTEM \"[>\">" + list).asDictionary());
}

TEST(XmlPropertyListTest, WorkGrowsWithTheBytesOnly) {
  std::string attributes;
  for (int i = 0; i < 100000; ++i) attributes += " a" + std::to_string(i) + "='>'";
  std::string types = "<!DOCTYPE plist [<!ENTITY e '" + std::string(4000, 'e') + "'>]>";
  const std::vector<std::string> hostile = {
      "<plist" + attributes + "><dict/></plist>",
      types + "<plist><string>" + repeated("&e;", 100000) + "</string></plist>",
      "<plist>" + repeated("<array>", 200000),
      "<plist>" + repeated("<dict><key>a</key>", 50000) + repeated("</dict>", 50000) + "</plist>",
      "<plist><string>" + repeated("&amp;&#65;", 180000) + "</string></plist>",
      "<plist><string>" + repeated("<![CDATA[]]>", 150000) + "</string></plist>",
      repeated("<!--", 400000)};
  for (const std::string& bytes : hostile) {
    // Takes milliseconds each; quadratic work would exceed the test's time limit.
    SCOPED_TRACE(bytes.substr(0, 40));
    readBytes(bytes);
    changedPropertyList(bytes, "Key", 1);
  }
}

TEST(XmlPropertyListTest, WhatNestsTooDeepCostsItselfAlone) {
  const auto nested = [](int levels) {
    const auto count = static_cast<std::size_t>(levels);
    return repeated("<array>", count) + repeated("</array>", count);
  };
  // The dictionary itself is a level, too.
  EXPECT_FALSE(readElement("<dict><key>a</key>" + nested(100000) + "<key>b</key><true/></dict>")
                   .asDictionary()
                   ->empty());
  PropertyList deep = Array{};
  for (int i = 1; i < kNestingLimit; ++i) deep = Array{deep};
  EXPECT_TRUE(throughXml(deep) == deep);
  EXPECT_FALSE(writePropertyList(Array{deep})) << "it could not be read again";
  EXPECT_FALSE(changedPropertyList(document("<dict/>"), "a", deep)) << "likewise";
}

TEST(XmlPropertyListTest, MoreThanSettingsEverAreIsMalformed) {
  const std::string padding(kPropertyListLimit - document("<dict></dict>").size(), ' ');
  EXPECT_TRUE(readElement("<dict>" + padding + "</dict>").asDictionary());
  EXPECT_EQ(readElement("<dict> " + padding + "</dict>"), PropertyList("malformed"));
}

}  // namespace
}  // namespace vembrix
