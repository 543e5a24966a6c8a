#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <utility>

#include "menubar/SpaceRow.h"
#include "platform/linux/menubar/VembrixSpaceRowView.h"
#include "platform/linux/menubar/VembrixSpaceRowViewTest.h"
#include "platform/linux/support/DropdownUser.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

/// Returns the first and the last column between the dot and the button of a row in which something
/// is drawn.
std::pair<int, int> inkOf(const QImage& row) {
  const QColor ground = row.pixelColor(40, 1);
  int first = row.width();
  int last = 0;
  for (int x = 32; x < row.width(); ++x) {
    for (int y = 0; y < row.height(); ++y) {
      if (areAlike(row.pixelColor(x, y), ground, 40)) continue;
      first = std::min(first, x);
      last = std::max(last, x);
    }
  }
  return {first, last};
}

TEST_F(VembrixSpaceRowViewTest, ANameIsOneLineWhateverIsInIt) {
  const QImage plain = pictureOf(open({desktopOf("One Two")}), Qt::white);
  for (const char* name : {"One\nTwo", "One\rTwo", "One\u2028Two", "One\u2029Two", "One\tTwo"}) {
    user_.widget().close();
    EXPECT_EQ(pictureOf(open({desktopOf(name)}), Qt::white), plain) << name;
  }
}

TEST_F(VembrixSpaceRowViewTest, NamesThatRunToTheLeftBeginBesideTheDotToo) {
  constexpr int kTextLeft = 38;
  for (const char* name : {"Mail", "דואר", "بريد"}) {
    user_.widget().close();
    const auto [first, last] = inkOf(pictureOf(open({desktopOf(name)}), Qt::white));
    EXPECT_NEAR(first, kTextLeft, 3) << name;
    EXPECT_LT(last, kTextLeft + 60) << name;
  }
}

TEST_F(VembrixSpaceRowViewTest, ANameKeepsItsSideWhenItIsEdited) {
  for (const char* name : {"Mail", "דואר", "بريد"}) {
    user_.widget().close();
    VembrixSpaceRowView& row = open({desktopOf(name)});
    const int first = inkOf(pictureOf(row, Qt::white)).first;
    user_.clickPencil(row);
    RowEditField& field = row.editField();
    const auto caret = [&field] {
      return field.inputMethodQuery(Qt::ImCursorRectangle).toRectF().center().x();
    };
    field.home(false);
    const double begin = caret();
    field.end(false);
    EXPECT_NEAR(field.x() + std::min(begin, caret()), first, 6) << name;
  }
}

TEST_F(VembrixSpaceRowViewTest, ALongNameEndsBeforeTheButton) {
  const std::string name(300, 'W');
  VembrixSpaceRowView& row = open({desktopOf(name)});
  const auto [first, last] = inkOf(pictureOf(row, Qt::white));
  EXPECT_LT(last, row.width() - 10 - 22);
  EXPECT_GT(last, row.width() - 10 - 22 - 8 - 24);
  EXPECT_EQ(toldOf(row).name.size(), 300);
}

TEST_F(VembrixSpaceRowViewTest, AnEmojiIsAName) {
  VembrixSpaceRowView& row = open({desktopOf("🛠👩‍👩‍👧")});
  user_.clickPencil(row);
  EXPECT_EQ(row.editedText(), "🛠👩‍👩‍👧");
  user_.key(Qt::Key_Return);
  EXPECT_THAT(names_, ElementsAre("🛠👩‍👩‍👧"));
}

TEST_F(VembrixSpaceRowViewTest, TheTextContrastsWithTheGroundInLightAndInDark) {
  for (const Appearance appearance : {Appearance::Light, Appearance::Dark}) {
    user_.widget().close();
    user_.menu().setAppearance(appearance);
    VembrixSpaceRowView& row = open({desktopOf("HHHH")});
    const QColor ground = user_.widget().palette().color(QPalette::Window);
    const QImage picture = pictureOf(row, ground);
    EXPECT_LT(inkOf(picture).first, row.width());
    user_.clickPencil(row);
    const QPalette& field = row.editField().palette();
    const float difference =
        field.color(QPalette::Text).lightnessF() - field.color(QPalette::Base).lightnessF();
    EXPECT_GT(appearance == Appearance::Dark ? difference : -difference, 0.5F);
  }
}

/// The dot of a desktop, drawn at the parameter's number of pixels per point.
class SpaceRowDotTest : public VembrixSpaceRowViewTest, public testing::WithParamInterface<int> {
 protected:
  void draw(const Desktop& desktop) {
    picture_ = pictureOf(open({desktop}), Qt::white, GetParam());
  }

  /// Returns the colour at that distance to the right of the dot's centre, in points.
  QColor at(double distance) {
    const double x = (21 + distance) * GetParam();
    return picture_.pixelColor(static_cast<int>(x), 12 * GetParam());
  }

  QImage picture_;
};

TEST_P(SpaceRowDotTest, TheActiveDesktopsIsADisc) {
  Desktop desktop = desktopOf("Mail");
  desktop.isActive = true;
  draw(desktop);
  EXPECT_EQ(at(0), QColor(Qt::red));
  EXPECT_EQ(at(-6), QColor(Qt::red));
  EXPECT_EQ(at(5.5), QColor(Qt::red));
  EXPECT_EQ(at(8), QColor(Qt::white));
  EXPECT_EQ(at(-9), QColor(Qt::white));
}

TEST_P(SpaceRowDotTest, OthersAreARing) {
  draw(desktopOf("Mail"));
  EXPECT_EQ(at(0), QColor(Qt::white));
  EXPECT_EQ(at(4), QColor(Qt::white));
  // The stroke of 1.5 points is centred on a radius of 6: from 5.25 to 6.75.
  EXPECT_LT(at(5.5).green(), 100);
  EXPECT_LT(at(-6).green(), 100);
  EXPECT_EQ(at(8), QColor(Qt::white));
}

TEST_P(SpaceRowDotTest, AWarmOneGlowsInside) {
  Desktop desktop = desktopOf("Mail");
  desktop.heatGlow = kBlue;
  draw(desktop);
  EXPECT_EQ(at(0), QColor(Qt::blue));
  EXPECT_EQ(at(4), QColor(Qt::blue));
  EXPECT_GT(at(-6).red(), 150);
  EXPECT_EQ(at(8), QColor(Qt::white));
}

INSTANTIATE_TEST_SUITE_P(PixelsPerPoint, SpaceRowDotTest, testing::Values(1, 2));

}  // namespace
}  // namespace vembrix
