#include "platform/Pasteboard.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include "platform/Application.h"
#include "platform/conformance/TextSamples.h"
#import "platform/macos/support/Conversions.h"

namespace vembrix {
namespace {

/// Restores what the user had copied at the end.
class PasteboardTest : public testing::Test {
 protected:
  PasteboardTest() {
    Application::shared();
    for (NSPasteboardItem* item in native().pasteboardItems) {
      auto* copy = [[NSPasteboardItem alloc] init];
      for (NSPasteboardType type in item.types) {
        if (NSData* data = [item dataForType:type]) [copy setData:data forType:type];
      }
      [former_ addObject:copy];
    }
    [native() clearContents];
  }
  ~PasteboardTest() override {
    [native() clearContents];
    if (former_.count > 0) [native() writeObjects:former_];
  }

  static NSPasteboard* native() { return NSPasteboard.generalPasteboard; }
  /// Returns what another program would paste.
  static std::string pasted() {
    return utf8String([native() stringForType:NSPasteboardTypeString]);
  }

  Pasteboard& pasteboard_ = Pasteboard::general();

 private:
  NSMutableArray<NSPasteboardItem*>* const former_ = [NSMutableArray array];
};

TEST_F(PasteboardTest, TextIsThereForOthersToPaste) {
  for (const std::string& text : textSamples()) {
    EXPECT_TRUE(pasteboard_.setString(text));
    EXPECT_EQ(pasted(), text);
  }
  EXPECT_FALSE([native() canReadItemWithDataConformingToTypes:@[ NSPasteboardTypeRTF ]]);
}

TEST_F(PasteboardTest, WhatIsNoUtf8IsReplaced) {
  for (const std::string& bytes : malformedUtf8Samples()) {
    EXPECT_TRUE(pasteboard_.setString("<" + bytes + ">"));
    EXPECT_EQ(pasted().substr(0, 4), "<\uFFFD");
    EXPECT_TRUE(isWellFormedUtf8(pasted()));
  }
}

TEST_F(PasteboardTest, ATextTakesThePlaceOfAllThatIsThere) {
  [native() setData:[NSData dataWithBytes:"x" length:1] forType:NSPasteboardTypeRTF];
  EXPECT_TRUE(pasteboard_.setString("text"));
  EXPECT_FALSE([native() canReadItemWithDataConformingToTypes:@[ NSPasteboardTypeRTF ]]);
}

TEST_F(PasteboardTest, TextOfManyMegabytesIsCopiedWhole) {
  const std::string text(20 << 20, 'x');
  EXPECT_TRUE(pasteboard_.setString(text));
  EXPECT_TRUE(pasted() == text);
}

}  // namespace
}  // namespace vembrix
