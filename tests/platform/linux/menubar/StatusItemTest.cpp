#include "platform/StatusItem.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/Application.h"
#include "platform/DropdownMenu.h"
#include "platform/UserDefaults.h"
#include "platform/linux/menubar/NativeDropdownMenu.h"
#include "platform/linux/menubar/strip/StatusItemLabel.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using Content = StatusItemContent;
using testing::ElementsAre;

constexpr Srgb kPink{1.0, 0.71, 0.76};
constexpr QRgb kLightBar = qRgb(246, 246, 246);
constexpr QRgb kDarkBar = qRgb(40, 40, 42);

int distance(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b))});
}

QRgb rgbOf(const Srgb& color) {
  return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                          static_cast<float>(color.blue))
      .rgb();
}

/// How many pixels are that colour, but for what the eye does not see.
int count(const QImage& image, QRgb color, int tolerance = 2) {
  int found = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (distance(image.pixel(x, y), color) <= tolerance) found += 1;
    }
  }
  return found;
}

Content filled(const std::string& title, const Srgb& fill = kPink) {
  Content content;
  content.label = Content::AttributedTitle{title, kBlack};
  content.fill = fill;
  content.cornerRadius = 3;
  return content;
}

Content plain(const std::string& title) {
  Content content;
  content.label = Content::PlainTitle{title};
  return content;
}

Content fixed(Content content) {
  content.length = StatusItemLength::fixed(140);
  return content;
}

/// One black square that covers half of the image's width at its lower edge.
Content icon() {
  Content content;
  content.label = TemplateImage{{16, 16}, {{{0, 0, 8, 8}, 0}}};
  content.length = StatusItemLength::square();
  return content;
}

class StatusItemTest : public testing::Test {
 protected:
  StatusItemTest() {
    TestSession::useNoScreen();
    item_ = StatusItem::create();
  }

  static QWidget* windowOfRole(const QString& role) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->windowRole() == role) return widget;
    }
    return nullptr;
  }

  QWidget& strip() { return *windowOfRole("status-item"); }

  QImage show(const Content& content) {
    item_->setContent(content);
    return picture();
  }
  QImage picture() { return strip().grab().toImage(); }

  QAbstractButton& button() { return *strip().findChild<QAbstractButton*>(); }

  void mouse(QEvent::Type type, const QPoint& place) {
    const Qt::MouseButton changed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const bool isReleased = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, place, button().mapToGlobal(place), changed,
                      isReleased ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&button(), &event);
  }
  /// Where the mouse is on the item as it stands each time.
  void drag(const QPoint& by) {
    const QPoint start = strip().pos();
    mouse(QEvent::MouseButtonPress, {5, 5});
    for (const QPoint& step : {by / 2, by})
      mouse(QEvent::MouseMove, start + step + QPoint(5, 5) - strip().pos());
    mouse(QEvent::MouseButtonRelease, {5, 5});
  }
  void click(const QPoint& trembling = {}) {
    mouse(QEvent::MouseButtonPress, {5, 5});
    mouse(QEvent::MouseMove, QPoint(5, 5) + trembling);
    mouse(QEvent::MouseButtonRelease, QPoint(5, 5) + trembling);
  }

  static void useDarkWidgets() {
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, QColor(30, 30, 30));
    palette.setColor(QPalette::WindowText, QColor(230, 230, 230));
    QApplication::setPalette(palette);
    ASSERT_TRUE(
        runUntil([] { return Application::shared().effectiveAppearance() == Appearance::Dark; }));
  }

  TestSession session_;
  std::unique_ptr<StatusItem> item_;
};

// What it looks like

/// The lengths of the runs of equal pixels along a line.
std::vector<int> runsOf(const QImage& image, QPoint place, const QPoint& step) {
  std::vector<int> runs;
  for (QRgb last = 0; image.valid(place); place += step) {
    const QRgb pixel = image.pixel(place);
    if (runs.empty() || pixel != last) runs.push_back(0);
    runs.back() += 1;
    last = pixel;
  }
  return runs;
}

TEST_F(StatusItemTest, TheBarFramesTheFillEvenly) {
  const QImage image = show(filled(""));
  ASSERT_EQ(image.size(), QSize(10, 24));
  EXPECT_EQ(image.pixel(0, 12), kLightBar);
  EXPECT_EQ(image.pixel(5, 12), rgbOf(kPink));
  EXPECT_THAT(runsOf(image, {0, 12}, {1, 0}), ElementsAre(1, 8, 1));
  EXPECT_THAT(runsOf(image, {5, 0}, {0, 1}), ElementsAre(1, 22, 1));
}

TEST_F(StatusItemTest, TheFillsEdgesAreSharpAndItsFrameIsEvenAtEveryScale) {
  StatusItemLabel label;
  label.setContent(filled(""));
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    const int across = static_cast<int>(std::lround(label.width() * scale));
    const int down = static_cast<int>(std::lround(StatusItemLabel::kBarHeight * scale));
    QImage image(across, down, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(kLightBar);
    QPainter painter(&image);
    label.paint(painter, Appearance::Light);
    painter.end();
    const int rim = static_cast<int>(scale);
    EXPECT_THAT(runsOf(image, {0, down / 2}, {1, 0}), ElementsAre(rim, across - 2 * rim, rim))
        << scale;
    EXPECT_THAT(runsOf(image, {across / 2, 0}, {0, 1}), ElementsAre(rim, down - 2 * rim, rim))
        << scale;
  }
}

TEST_F(StatusItemTest, TheFillsCornersAreRound) {
  const QImage image = show(filled(" Desktop 1 "));
  for (const int x : {1, image.width() - 2}) {
    for (const int y : {1, 22}) {
      EXPECT_GT(distance(image.pixel(x, y), rgbOf(kPink)), 10) << x << " " << y;
    }
  }
  // Three points on, the edge is straight.
  EXPECT_EQ(image.pixel(1, 5), rgbOf(kPink));
  EXPECT_EQ(image.pixel(4, 1), rgbOf(kPink));
}

TEST_F(StatusItemTest, WithoutARadiusTheCornersAreSquare) {
  Content content = filled(" Desktop 1 ");
  content.cornerRadius = 0;
  EXPECT_EQ(show(content).pixel(1, 1), rgbOf(kPink));
}

TEST_F(StatusItemTest, TheTitleIsInItsOwnColor) {
  EXPECT_GT(count(show(filled(" Desktop 1 ")), qRgb(0, 0, 0)), 10);
  Content red = plain("");
  red.label = Content::AttributedTitle{" Desktop 1 ", Srgb{0.8, 0, 0}};
  const QImage image = show(red);
  EXPECT_GT(count(image, qRgb(204, 0, 0)), 10);
  EXPECT_EQ(image.pixel(0, 12), kLightBar);
}

TEST_F(StatusItemTest, APlainTitleIsInTheMenuBarsColor) {
  const QImage image = show(plain("Desktops"));
  // Black at 85 % on the bar.
  EXPECT_GT(count(image, qRgb(37, 37, 37)), 10);
  EXPECT_EQ(count(image, qRgb(0, 0, 0)), 0);
}

TEST_F(StatusItemTest, TheBarFollowsTheSystemsAppearance) {
  show(plain("Desktops"));
  useDarkWidgets();
  const QImage image = picture();
  EXPECT_EQ(image.pixel(1, 1), kDarkBar);
  EXPECT_GT(count(image, qRgb(223, 223, 223), 3), 10);
}

TEST_F(StatusItemTest, SystemColorsFollowTheSystemsAppearance) {
  Content content = filled(" Desktop 1 ");
  content.fill = Color(SystemColor::ControlAccent);
  EXPECT_EQ(show(content).pixel(3, 12), qRgb(0, 122, 255));
  useDarkWidgets();
  EXPECT_EQ(picture().pixel(3, 12), qRgb(10, 132, 255));
}

TEST_F(StatusItemTest, ColorsOutsideOfTheirRangeAreTheNearest) {
  EXPECT_EQ(show(filled(" x ", {2.0, -1.0, 1.0})).pixel(1, 12), qRgb(255, 0, 255));
}

TEST_F(StatusItemTest, CapitalsStandInTheMiddleOfTheBar) {
  const QImage image = show(filled("HHH"));
  int top = 24;
  int bottom = 0;
  for (int y = 0; y < 24; ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (distance(image.pixel(x, y), qRgb(0, 0, 0)) > 60) continue;
      top = std::min(top, y);
      bottom = std::max(bottom, y);
    }
  }
  EXPECT_NEAR(top, 23 - bottom, 1);
  EXPECT_NEAR(bottom - top + 1, 9, 1);
}

TEST_F(StatusItemTest, ATemplateImageIsDrawnInTheMiddleInTheMenuBarsColor) {
  const QImage image = show(icon());
  const QRgb ink = qRgb(37, 37, 37);
  // Its origin is at the bottom left.
  EXPECT_EQ(image.pixel(4, 19), ink);
  EXPECT_EQ(image.pixel(11, 12), ink);
  EXPECT_EQ(image.pixel(12, 19), kLightBar);
  EXPECT_EQ(image.pixel(4, 11), kLightBar);
  EXPECT_EQ(image.pixel(4, 20), kLightBar);
  EXPECT_EQ(image.pixel(3, 19), kLightBar);
}

TEST_F(StatusItemTest, DrawsNamesOfAllScripts) {
  for (const char* name : {" שולחן עבודה ", " العمل ", " 日本語 ", " Ää é̂ ", " \t ", "  "}) {
    const QImage image = show(filled(name));
    const bool isBlank = QString(name).trimmed().isEmpty();
    EXPECT_EQ(count(image, qRgb(0, 0, 0), 60) == 0, isBlank) << name;
  }
}

TEST_F(StatusItemTest, DrawsEmojiInTheirColors) {
  const QImage image = show(filled(" \xF0\x9F\x8D\x8E "));
  // The apple's red is neither in the background nor a shade of grey.
  EXPECT_GT(count(image, qRgb(210, 40, 50), 50), 10);
}

TEST_F(StatusItemTest, DrawsANameOfSeveralLinesOnOne) {
  EXPECT_EQ(show(filled(" two lines ")), show(filled(" two\nlines ")));
}

TEST_F(StatusItemTest, TakesBrokenAndEndlessText) {
  show(filled(" \xFF\xC3 "));
  EXPECT_GT(strip().width(), 5);
  show(filled(std::string(100000, 'x')));
  EXPECT_EQ(strip().width(), strip().screen()->geometry().width());
}

// How wide it is

TEST_F(StatusItemTest, IsAsWideAsItsTitle) {
  show(filled(" A "));
  const int narrow = strip().width();
  show(filled(" A much longer name "));
  EXPECT_GT(strip().width(), narrow + 50);
  show(filled("A"));
  EXPECT_LT(strip().width(), narrow) << "blanks count";
}

TEST_F(StatusItemTest, IsSquareWhenToldSo) {
  const QImage image = show(icon());
  EXPECT_EQ(image.size(), QSize(24, 24));
}

TEST_F(StatusItemTest, IsExactlyAsWideAsTold) {
  show(fixed(filled(" A ")));
  EXPECT_EQ(strip().width(), 140);
  show(fixed(filled(" A name that is much too long for so little room ")));
  EXPECT_EQ(strip().width(), 140);
}

TEST_F(StatusItemTest, AWideTitleIsCutOffAtItsEnd) {
  const std::string name = " A name that is much too long for so little room";
  const QImage image = show(fixed(filled(name)));
  // What is cut off leaves no trace, no ellipsis either.
  EXPECT_EQ(image, show(fixed(filled(name + ", and longer still"))));
  EXPECT_GT(count(image.copy(130, 0, 10, 24), qRgb(0, 0, 0), 60), 0) << "up to the edge";
  EXPECT_GT(count(image.copy(0, 0, 20, 24), qRgb(0, 0, 0), 60), 0) << "from the start";
}

TEST_F(StatusItemTest, AWideTitleThatRunsToTheLeftIsCutOffThere) {
  const std::string name = " שולחן עבודה שולחן עבודה שולחן עבודה";
  const QImage image = show(fixed(filled(name)));
  EXPECT_EQ(image, show(fixed(filled(name + " שולחן"))));
}

TEST_F(StatusItemTest, AWideTitleIsCutOffWithTheFill) {
  for (const std::string& name :
       {std::string(60, 'M'), std::string("שולחן עבודה שולחן עבודה שולחן")}) {
    const QImage image = show(fixed(filled(name)));
    for (const int x : {0, image.width() - 1}) {
      EXPECT_EQ(count(image.copy(x, 0, 1, image.height()), kLightBar), image.height()) << name;
    }
  }
}

TEST_F(StatusItemTest, ANarrowTitleStandsInTheMiddleOfAFixedWidth) {
  const QImage image = show(fixed(filled(" H ")));
  int left = 0;
  while (left < 140 && distance(image.pixel(left, 12), rgbOf(kPink)) < 60) left += 1;
  int right = 139;
  while (right > 0 && distance(image.pixel(right, 12), rgbOf(kPink)) < 60) right -= 1;
  EXPECT_NEAR(left, 139 - right, 2);
}

// Its window

TEST_F(StatusItemTest, HasAButton) {
  EXPECT_TRUE(item_->hasButton());
}

TEST_F(StatusItemTest, SitsAtTheTopRightOfTheScreen) {
  const QRect screen = QApplication::primaryScreen()->geometry();
  for (const char* name : {" A ", " A much longer name "}) {
    show(filled(name));
    EXPECT_TRUE(strip().isVisible());
    EXPECT_EQ(strip().geometry().topRight(), screen.topRight());
  }
}

TEST_F(StatusItemTest, ItsWindowIsNamedAfterItsTitle) {
  const auto name = [&] { return strip().windowHandle()->title().toStdString(); };
  show(filled(" Büro [*] \xF0\x9F\x8F\xA0 "));
  EXPECT_EQ(name(), "Büro [*] \xF0\x9F\x8F\xA0");
  show(plain("Desktops"));
  EXPECT_EQ(name(), "Desktops");
  show(icon());
  EXPECT_EQ(name(), "Vembrix");
}

TEST_F(StatusItemTest, GoesWithItsObject) {
  show(filled(" A "));
  item_.reset();
  EXPECT_EQ(windowOfRole("status-item"), nullptr);
}

TEST_F(StatusItemTest, EqualContentChangesNothing) {
  show(filled(" A "));
  const QImage before = picture();
  const QRect place = strip().geometry();
  show(filled(" A "));
  EXPECT_EQ(picture(), before);
  EXPECT_EQ(strip().geometry(), place);
}

TEST_F(StatusItemTest, AnotherColorIsSeenAtTheSamePlace) {
  show(filled(" A "));
  const QImage before = picture();
  const QRect place = strip().geometry();
  show(filled(" A ", {0.5, 0.5, 1}));
  EXPECT_NE(picture(), before);
  EXPECT_EQ(strip().geometry(), place);
}

// Its menu

TEST_F(StatusItemTest, OwnsItsMenu) {
  EXPECT_EQ(item_->menu(), nullptr);
  auto menu = DropdownMenu::create();
  DropdownMenu* raw = menu.get();
  item_->setMenu(std::move(menu));
  EXPECT_EQ(item_->menu(), raw);
  EXPECT_NE(windowOfRole("menu"), nullptr);
  item_->setMenu(nullptr);
  EXPECT_EQ(item_->menu(), nullptr);
  EXPECT_EQ(windowOfRole("menu"), nullptr);
}

TEST_F(StatusItemTest, AClickOpensTheMenuBelow) {
  show(filled(" A "));
  item_->setMenu(DropdownMenu::create());
  QMenu& menu = static_cast<NativeDropdownMenu*>(item_->menu())->widget();
  menu.addAction("Entry");
  click();
  EXPECT_TRUE(menu.isVisible());
  EXPECT_GE(menu.y(), strip().geometry().bottom());
  menu.close();
}

TEST_F(StatusItemTest, AClickWithATremblingHandIsAClick) {
  show(filled(" A "));
  item_->setMenu(DropdownMenu::create());
  QMenu& menu = static_cast<NativeDropdownMenu*>(item_->menu())->widget();
  menu.addAction("Entry");
  const QRect place = strip().geometry();
  click({3, 2});
  EXPECT_TRUE(menu.isVisible());
  EXPECT_EQ(strip().geometry(), place);
  menu.close();
}

TEST_F(StatusItemTest, ADragOpensNothingAndIsRemembered) {
  show(filled(" A "));
  item_->setMenu(DropdownMenu::create());
  QMenu& menu = static_cast<NativeDropdownMenu*>(item_->menu())->widget();
  menu.addAction("Entry");
  const QPoint start = strip().pos();
  drag({-300, 5});
  EXPECT_FALSE(menu.isVisible());
  EXPECT_EQ(strip().pos(), start - QPoint(300, 0));
  show(filled(" A longer name "));
  EXPECT_LT(strip().x(), start.x() - 300) << "it grows from the end that is nearer to its edge";
  item_ = StatusItem::create();
  show(filled(" A "));
  EXPECT_EQ(strip().pos(), start - QPoint(300, 0)) << "also the next time";
}

TEST_F(StatusItemTest, DraggedIntoTheCornerItIsWhereItWas) {
  show(filled(" A "));
  const QRect place = strip().geometry();
  drag({-300, 5});
  ASSERT_NE(strip().geometry(), place);
  drag({295, 8});
  EXPECT_EQ(strip().geometry(), place);
  EXPECT_TRUE(UserDefaults::standard().object("LinuxStatusItemPlaces").isNull());
}

TEST_F(StatusItemTest, TheMenuOpensAboveAnItemAtTheBottom) {
  show(filled(" A "));
  item_->setMenu(DropdownMenu::create());
  QMenu& menu = static_cast<NativeDropdownMenu*>(item_->menu())->widget();
  menu.addAction("Entry");
  const QRect screen = QApplication::primaryScreen()->geometry();
  drag({-300, screen.height()});
  ASSERT_EQ(strip().geometry().bottom(), screen.bottom());
  click();
  EXPECT_LE(menu.geometry().bottom(), strip().geometry().top());
  menu.close();
}

// For assistive programs

TEST_F(StatusItemTest, IsAButtonThatIsNamedAndPressed) {
  show(filled(" Büro "));
  int clicks = 0;
  QObject::connect(&button(), &QAbstractButton::clicked, [&] { clicks += 1; });
  QAccessibleInterface* described = QAccessible::queryAccessibleInterface(&button());
  EXPECT_EQ(described->role(), QAccessible::Button);
  EXPECT_EQ(described->text(QAccessible::Name), "Büro");
  described->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(clicks, 1);
}

TEST_F(StatusItemTest, ItsOpenMenuBelongsToIt) {
  show(filled(" A "));
  item_->setMenu(DropdownMenu::create());
  QMenu& menu = static_cast<NativeDropdownMenu*>(item_->menu())->widget();
  QAction* entry = menu.addAction("Entry");
  QAccessibleInterface* described = QAccessible::queryAccessibleInterface(&button());
  EXPECT_EQ(described->childCount(), 0) << "closed";
  click();
  ASSERT_EQ(described->childCount(), 1);
  QAccessibleInterface* list = described->child(0);
  EXPECT_EQ(list->role(), QAccessible::PopupMenu);
  EXPECT_EQ(list->parent(), described);
  ASSERT_EQ(list->childCount(), 1);
  QAccessibleInterface* item = list->child(0);
  EXPECT_EQ(item->role(), QAccessible::MenuItem);
  EXPECT_EQ(item->text(QAccessible::Name), "Entry");
  EXPECT_EQ(item->parent(), list);
  int choices = 0;
  QObject::connect(entry, &QAction::triggered, [&] { choices += 1; });
  item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(choices, 1);
  EXPECT_FALSE(menu.isVisible());
}

TEST_F(StatusItemTest, AClickWithoutAMenuOrAnEmptyOneShowsNothing) {
  show(filled(" A "));
  click();
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  item_->setMenu(DropdownMenu::create());
  click();
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

}  // namespace
}  // namespace vembrix
