#include "platform/SettingsForm.h"

#include <gtest/gtest.h>

namespace vembrix {
namespace {

TEST(SettingsFormTest, TextsThatWrapAndCommandsFillTheirRow) {
  EXPECT_TRUE(fillsRow(WrappingLabel{}));
  EXPECT_TRUE(fillsRow(CommandField{}));
}

TEST(SettingsFormTest, OtherControlsAreAsWideAsTheyNeed) {
  const std::vector<FormControl> others = {Slider{},      Checkbox{},      Popup{},
                                           Header{},      ColorGrid{},     PushButton{},
                                           StatusLabel{}, SelectableText{}};
  for (const FormControl& control : others) EXPECT_FALSE(fillsRow(control)) << control.index();
}

}  // namespace
}  // namespace vembrix
