#import "platform/DropdownMenu.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <memory>

#include "platform/Application.h"
#import "platform/macos/menubar/NativeDropdownMenu.h"

namespace vembrix {
namespace {

class DropdownMenuTest : public testing::Test {
 protected:
  DropdownMenuTest() { Application::shared(); }

  NSMenu* native() const { return static_cast<NativeDropdownMenu&>(*menu_).nativeMenu(); }

  const std::unique_ptr<DropdownMenu> menu_ = DropdownMenu::create();
};

TEST_F(DropdownMenuTest, HasTheAppearanceThatIsSet) {
  menu_->setAppearance(Appearance::Dark);
  EXPECT_TRUE([native().appearance.name isEqualToString:NSAppearanceNameDarkAqua]);
  menu_->setAppearance(Appearance::Light);
  EXPECT_TRUE([native().appearance.name isEqualToString:NSAppearanceNameAqua]);
}

TEST_F(DropdownMenuTest, HasNoAppearanceOfItsOwnWhileItFollowsTheSystem) {
  menu_->setAppearance(Appearance::Dark);
  menu_->setAppearance(std::nullopt);
  EXPECT_EQ(native().appearance, nil);
}

}  // namespace
}  // namespace vembrix
