#include <gmock/gmock.h>

#include <QWheelEvent>
#include <QWindow>
#include <QtTest/QTest>

#include "platform/linux/menubar/DropdownMenuTest.h"
#include "platform/linux/support/DropdownUser.h"

namespace vembrix {
namespace {

using testing::ElementsAre;

class LongDropdownMenuTest : public DropdownMenuTest {
 protected:
  LongDropdownMenuTest() { user_.open(manyItems(300)); }

  /// Turns the wheel by one notch, downwards.
  void turnWheel(QPoint point) {
    QWheelEvent event(point, widget().mapToGlobal(point), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    // Rows pass only events from outside the program on to the menu.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget().windowHandle(), &event);
  }

  /// Returns whether the whole row is visible.
  bool isInSight(const VembrixSpaceRowView& row) {
    return widget().rect().contains(row.geometry()) && !row.visibleRegion().isEmpty() &&
           row.visibleRegion().boundingRect() == row.rect();
  }
};

TEST_F(LongDropdownMenuTest, IsNoTallerThanTheScreen) {
  const QRect screen = widget().screen()->geometry();
  EXPECT_TRUE(screen.contains(widget().geometry()));
  EXPECT_GT(widget().height(), screen.height() / 2);
}

TEST_F(LongDropdownMenuTest, ScrollsWithTheKeyboard) {
  EXPECT_FALSE(isInSight(user_.row(299)));
  user_.key(Qt::Key_Up);
  user_.key(Qt::Key_Up);
  user_.key(Qt::Key_Up);
  EXPECT_TRUE(isInSight(user_.row(299)));
  EXPECT_TRUE(user_.row(299).state().background);
  user_.key(Qt::Key_Return);
  EXPECT_THAT(events(), ElementsAre("300, closed"));
}

TEST_F(LongDropdownMenuTest, StaysWhereItIsUnderThePointer) {
  const QRect before = user_.row(0).geometry();
  user_.pointAt(widget().rect().center());
  user_.pointAt(user_.row(25));
  EXPECT_EQ(user_.row(0).geometry(), before);
  user_.key(Qt::Key_Down);
  user_.key(Qt::Key_Return);
  EXPECT_THAT(events(), ElementsAre("27, closed"));
}

TEST_F(LongDropdownMenuTest, ScrollsWithTheWheel) {
  ASSERT_FALSE(isInSight(user_.row(100)));
  const QPoint middle = widget().rect().center();
  user_.pointAt(middle);
  for (int turn = 0; turn < 300 && !isInSight(user_.row(100)); ++turn) {
    turnWheel(middle);
  }
  ASSERT_TRUE(isInSight(user_.row(100)));
  user_.click(user_.row(100));
  EXPECT_THAT(events(), ElementsAre("101, closed"));
}

}  // namespace
}  // namespace vembrix
