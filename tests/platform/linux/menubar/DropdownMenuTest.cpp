#include "platform/DropdownMenu.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QMenu>
#include <QPalette>
#include <QScreen>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>
#include <QtTest/QTest>
#include <string>
#include <utility>
#include <vector>

#include "menubar/SpaceRow.h"
#include "platform/Application.h"
#include "platform/linux/support/DropdownUser.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Events = std::vector<std::string>;

class DropdownMenuTest : public testing::Test {
 protected:
  QMenu& widget() { return user_.widget(); }
  QColor ground() { return widget().palette().color(QPalette::Window); }
  QColor text() { return widget().palette().color(QPalette::WindowText); }
  bool isDark() { return text().lightnessF() > ground().lightnessF(); }

  static void useWidgets(const QColor& ground, const QColor& text) {
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, text);
    QApplication::setPalette(palette);
  }

  /// One of the product's, which tells when it was chosen.
  MenuItem rowOf(const std::string& name) {
    return SpaceRow::create(
        {.displayName = name, .isActive = false, .dotColor = kBlack, .heatGlow = {}},
        {.onSwitch = [this, name] { tell(name); }, .onCommitRename = {}});
  }

  MenuItem commandOf(const std::string& title, const std::string& key) {
    return MenuCommand{
        .title = title, .font = {}, .keyEquivalent = key, .action = [this, title] { tell(title); }};
  }

  /// Rows of these names, and the commands that stand below them.
  std::vector<MenuItem> itemsOf(const std::vector<std::string>& names) {
    std::vector<MenuItem> items;
    items.reserve(names.size() + 4);
    for (const std::string& name : names) items.push_back(rowOf(name));
    items.emplace_back(MenuSeparator{});
    items.push_back(commandOf("Preferences", ","));
    items.emplace_back(MenuSeparator{});
    items.push_back(commandOf("Quit", "q"));
    return items;
  }

  /// Desktops of these numbers, from 1.
  std::vector<MenuItem> manyItems(int count) {
    std::vector<std::string> names;
    for (int number = 1; number <= count; ++number) names.push_back(std::to_string(number));
    return itemsOf(names);
  }

  void tell(const std::string& what) {
    events_.push_back(what + (user_.isOpen() ? ", open" : ", closed"));
  }

  /// What happened, when nothing more is about to.
  const Events& events() {
    runFor(std::chrono::milliseconds(20));
    return events_;
  }

  DropdownUser user_;
  DropdownMenu* menu_ = &user_.menu();
  Events events_;
};

TEST_F(DropdownMenuTest, IsKnownByItsRole) {
  EXPECT_EQ(widget().windowRole(), "menu");
}

TEST_F(DropdownMenuTest, TakesTheAppearanceThatItIsTold) {
  menu_->setAppearance(Appearance::Dark);
  EXPECT_TRUE(isDark());
  menu_->setAppearance(Appearance::Light);
  EXPECT_FALSE(isDark());
}

TEST_F(DropdownMenuTest, FollowsTheSystemWhereItIsToldNone) {
  EXPECT_FALSE(isDark());
  useWidgets(QColor(30, 30, 30), QColor(230, 230, 230));
  EXPECT_TRUE(runUntil([&] { return isDark(); }));
  menu_->setAppearance(Appearance::Light);
  EXPECT_FALSE(isDark());
  menu_->setAppearance(std::nullopt);
  EXPECT_TRUE(isDark());
  useWidgets(Qt::white, Qt::black);
  EXPECT_TRUE(runUntil([&] { return !isDark(); }));
}

TEST_F(DropdownMenuTest, AToldAppearanceDoesNotFollowTheSystem) {
  menu_->setAppearance(Appearance::Light);
  useWidgets(QColor(30, 30, 30), QColor(230, 230, 230));
  ASSERT_TRUE(
      runUntil([] { return Application::shared().effectiveAppearance() == Appearance::Dark; }));
  EXPECT_FALSE(isDark());
}

// Opening.

TEST_F(DropdownMenuTest, StaysOpenWhenTheProgramHasLostTheFocus) {
  menu_->setItems(manyItems(3));
  user_.open();
  QEvent deactivation(QEvent::ApplicationDeactivate);
  QCoreApplication::sendEvent(qApp, &deactivation);
  EXPECT_TRUE(user_.isOpen());
}

TEST_F(DropdownMenuTest, AsksForItsItemsEachTimeItOpens) {
  int updates = 0;
  menu_->setNeedsUpdateHandler([&] {
    updates += 1;
    menu_->setItems(manyItems(updates));
  });
  user_.open();
  EXPECT_EQ(widget().actions().size(), 1 + 4);
  user_.key(Qt::Key_Escape);
  EXPECT_EQ(updates, 1);
  user_.open();
  EXPECT_EQ(widget().actions().size(), 2 + 4);
}

TEST_F(DropdownMenuTest, ASelectedCommandHasTheHighlightThatItIsGivenElseTheSystems) {
  std::vector<MenuItem> items;
  items.push_back(commandOf("System", ""));
  items.push_back(commandOf("Given", ""));
  std::get<MenuCommand>(items.back()).highlight = Srgb{1, 0, 0, 0.5};
  user_.open(std::move(items));
  const auto selected = [this](int index) {
    QAction* action = widget().actions()[index];
    widget().setActiveAction(action);
    // To the left of the title.
    const QPoint place = widget().actionGeometry(action).topLeft() + QPoint(9, 10);
    return pictureOf(widget(), Qt::white).pixelColor(place);
  };
  EXPECT_EQ(selected(0), widget().palette().color(QPalette::Highlight));
  const QColor given = selected(1);
  EXPECT_NEAR(given.red(), (255 + ground().red()) / 2.0, 1);
  EXPECT_NEAR(given.blue(), ground().blue() / 2.0, 1);
}

TEST_F(DropdownMenuTest, DoesNotOpenWithoutItems) {
  user_.open({});
  EXPECT_FALSE(user_.isOpen());
}

// The keyboard.

TEST_F(DropdownMenuTest, ArrowsAndReturnChooseARow) {
  user_.open(itemsOf({"Mail", "Web", "Code"}));
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up}) user_.key(key);
  EXPECT_TRUE(user_.row(1).state().background);
  EXPECT_FALSE(user_.row(2).state().background);
  user_.key(Qt::Key_Return);
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("Web, closed"));
}

TEST_F(DropdownMenuTest, TheArrowsGoOnFromThePointer) {
  user_.open(itemsOf({"Mail", "Web", "Code"}));
  user_.pointAt(user_.row(1));
  user_.key(Qt::Key_Down);
  user_.key(Qt::Key_Return);
  EXPECT_THAT(events(), ElementsAre("Code, closed"));
}

TEST_F(DropdownMenuTest, ADigitChoosesTheRowOfThatNumber) {
  user_.open(itemsOf({"Mail", "Web", "Code"}));
  user_.key(Qt::Key_4);
  EXPECT_TRUE(user_.isOpen()) << "there are three";
  user_.key(Qt::Key_0);
  EXPECT_TRUE(user_.isOpen()) << "rows are counted from 1";
  user_.type("2");
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("Web, closed"));
}

TEST_F(DropdownMenuTest, TheFirstLettersOfANameSelectItsRow) {
  user_.open(itemsOf({"Mail", "music", "Müll", "3D", "Über uns"}));
  user_.type("MUS");
  EXPECT_TRUE(user_.row(1).state().background);
  user_.key(Qt::Key_Return);
  EXPECT_THAT(events(), ElementsAre("music, closed"));
}

TEST_F(DropdownMenuTest, TheSameLetterAgainGoesOnToTheNextSuchRow) {
  user_.open(itemsOf({"Mail", "Web", "Music"}));
  user_.type("mm");
  EXPECT_TRUE(user_.row(2).state().background);
  user_.type("m");
  EXPECT_TRUE(user_.row(0).state().background);
}

TEST_F(DropdownMenuTest, ADigitWithinANameThatIsTypedBelongsToIt) {
  user_.open(itemsOf({"Mail", "a1", "a2"}));
  user_.type("a2");
  EXPECT_TRUE(user_.isOpen());
  EXPECT_TRUE(user_.row(2).state().background);
}

TEST_F(DropdownMenuTest, LettersThatBeginNoNameSelectNothing) {
  user_.open(itemsOf({"Mail", "Web"}));
  user_.type("x");
  EXPECT_FALSE(user_.row(0).state().background);
  EXPECT_FALSE(user_.row(1).state().background);
  EXPECT_TRUE(user_.isOpen());
  user_.open(itemsOf({}));
  user_.type("x1");
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(DropdownMenuTest, LettersAndDigitsOfANameThatIsEditedChooseNothing) {
  user_.open(itemsOf({"Mail", "Web"}));
  user_.clickPencil(user_.row(0));
  user_.type("2w");
  EXPECT_TRUE(user_.isOpen());
  EXPECT_EQ(user_.row(0).editedText(), "2w");
  EXPECT_FALSE(user_.row(1).state().background);
}

TEST_F(DropdownMenuTest, KeyEquivalentsRunTheirCommandsAfterTheMenuHasClosed) {
  user_.open(itemsOf({"Mail"}));
  user_.key(Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("Preferences, closed"));
  user_.open();
  user_.key(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("Preferences, closed", "Quit, closed"));
}

TEST_F(DropdownMenuTest, AKeyEquivalentNeedsItsModifierAndNoOther) {
  user_.open(itemsOf({"Mail"}));
  user_.key(Qt::Key_Q);
  user_.key(Qt::Key_Q, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(DropdownMenuTest, NoLetterOfANameIsAKey) {
  user_.open(itemsOf({"Mail &Web", "R&D"}));
  user_.key(Qt::Key_W);
  user_.key(Qt::Key_D);
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(DropdownMenuTest, TheStandardCommandEndsTheProgram) {
  std::vector<MenuItem> items;
  items.emplace_back(MenuCommand{.title = "Quit",
                                 .font = {},
                                 .keyEquivalent = "q",
                                 .action = MenuCommand::Standard::Terminate});
  user_.open(std::move(items));
  QTimer::singleShot(0, [&] { user_.key(Qt::Key_Q, Qt::ControlModifier); });
  EXPECT_EQ(Application::shared().run(), 0);
}

// The pointer.

TEST_F(DropdownMenuTest, AClickRunsACommandAfterTheMenuHasClosed) {
  user_.open(itemsOf({"Mail"}));
  user_.click(*widget().actions().back());
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("Quit, closed"));
}

TEST_F(DropdownMenuTest, AClickOnASeparatorDoesNothing) {
  user_.open(itemsOf({"Mail"}));
  user_.click(*widget().actions().at(1));
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(DropdownMenuTest, ACommandMayOpenTheMenuWithOtherItems) {
  std::vector<MenuItem> items;
  items.emplace_back(
      MenuCommand{.title = "Again", .font = {}, .keyEquivalent = "", .action = [this] {
                    user_.open(itemsOf({"Mail"}));
                    tell("Again");
                  }});
  user_.open(std::move(items));
  user_.key(Qt::Key_Down);
  user_.key(Qt::Key_Return);
  EXPECT_THAT(events(), ElementsAre("Again, open"));
}

// Calls of a row's handlers.

class TellingHandler : public SpaceRowHandler {
 public:
  explicit TellingHandler(Events& events) : events_(events) {}

  void attach(SpaceRowView& /*view*/) override {}
  void setHovered(bool isHovered) override { hovered_ = isHovered; }
  void setHighlighted(bool isHighlighted) override {
    events_.emplace_back(isHighlighted ? "highlighted" : "not highlighted");
  }
  void setShown(bool isShown) override { events_.emplace_back(isShown ? "shown" : "not shown"); }
  [[nodiscard]] RowPart hitTest(Point /*point*/, Size /*bounds*/) const override {
    return RowPart::Row;
  }
  void mouseUp(Point point, Size bounds) override {
    events_.push_back("up at " + std::to_string(static_cast<int>(point.x)) + ", " +
                      std::to_string(static_cast<int>(point.y)) + " of " +
                      std::to_string(static_cast<int>(bounds.height)) +
                      (hovered_ ? ", hovered" : ""));
  }
  void activate() override { events_.emplace_back("activated"); }
  void renameClicked() override {}
  KeyHandling keyDown(RowKey /*key*/) override { return KeyHandling::Passed; }
  void commit() override {}
  void cancel() override { events_.emplace_back("cancelled"); }

 private:
  Events& events_;
  bool hovered_ = false;
};

class DropdownMenuHandlerTest : public DropdownMenuTest {
 protected:
  DropdownMenuHandlerTest() {
    std::vector<MenuItem> items;
    items.emplace_back(
        SpaceRowView::create({.dot = {}, .dotDescription = {}, .font = {}, .renameTitle = {}}, {},
                             std::make_unique<TellingHandler>(events_)));
    user_.open(std::move(items));
  }

  Events takeEvents() { return std::exchange(events_, {}); }
};

TEST_F(DropdownMenuHandlerTest, IsToldThatTheMenuOpensAndCloses) {
  EXPECT_THAT(takeEvents(), ElementsAre("shown"));
  user_.key(Qt::Key_Escape);
  EXPECT_THAT(takeEvents(), ElementsAre("cancelled", "not shown"));
  user_.open();
  EXPECT_THAT(takeEvents(), ElementsAre("shown"));
}

TEST_F(DropdownMenuHandlerTest, IsToldOfTheKeyboardsSelection) {
  takeEvents();
  user_.key(Qt::Key_Down);
  EXPECT_THAT(takeEvents(), ElementsAre("highlighted"));
  user_.key(Qt::Key_Return);
  EXPECT_THAT(takeEvents(), ElementsAre("not highlighted", "cancelled", "not shown", "activated"));
}

TEST_F(DropdownMenuHandlerTest, IsToldOfClicksFromTheBottomLeft) {
  takeEvents();
  user_.click(user_.row(0), {50, 4});
  EXPECT_THAT(takeEvents(), ElementsAre("up at 50, 20 of 24, hovered"));
}

// What is left behind.

struct Living {
  explicit Living(const QMenu& menu)
      : widgets(QApplication::allWidgets().size()), objects(menu.findChildren<QObject*>().size()) {}
  bool operator==(const Living&) const = default;

  qsizetype widgets;
  qsizetype objects;
};

TEST_F(DropdownMenuTest, NewItemsLeaveNothingOfThoseBefore) {
  menu_->setItems(manyItems(16));
  const Living once(widget());
  for (int time = 0; time < 1000; ++time) menu_->setItems(manyItems(16));
  EXPECT_EQ(Living(widget()), once);
  menu_->setItems({});
  EXPECT_THAT(widget().actions(), IsEmpty());
}

TEST_F(DropdownMenuTest, AThousandOpeningsLeaveOneSetOfWidgets) {
  menu_->setNeedsUpdateHandler([this] { menu_->setItems(manyItems(4)); });
  user_.open();
  user_.key(Qt::Key_Escape);
  const Living once(widget());
  for (int time = 0; time < 1000; ++time) {
    user_.open();
    widget().close();
  }
  EXPECT_EQ(Living(widget()), once);
}

TEST_F(DropdownMenuTest, NewItemsLeaveNothingOfARowThatWasEdited) {
  user_.open(manyItems(4));
  user_.key(Qt::Key_Escape);
  const Living once(widget());
  for (int time = 0; time < 20; ++time) {
    user_.open();
    user_.clickPencil(user_.row(2));
    ASSERT_TRUE(user_.row(2).state().isEditing);
    user_.type("Play");
    widget().close();
    menu_->setItems(manyItems(4));
    EXPECT_EQ(Living(widget()), once);
  }
}

TEST_F(DropdownMenuTest, GoesWhileARowIsEdited) {
  const qsizetype before = QApplication::allWidgets().size();
  auto menu = DropdownMenu::create();
  menu->setItems(manyItems(4));
  auto& native = static_cast<NativeDropdownMenu&>(*menu);
  native.open(QRect(40, 24, 1, 1), NativeDropdownMenu::OpenedBy::Click);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&native.widget()));
  native.widget().findChild<QAbstractButton*>()->click();
  ASSERT_TRUE(native.widget().findChild<QLineEdit*>()->isVisible());
  menu.reset();
  EXPECT_EQ(QApplication::allWidgets().size(), before);
}

// More rows than the screen is high.

class LongDropdownMenuTest : public DropdownMenuTest {
 protected:
  LongDropdownMenuTest() { user_.open(manyItems(300)); }

  /// By one notch, downwards.
  void turnWheel(QPoint point) {
    QWheelEvent event(point, widget().mapToGlobal(point), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    // Only what comes from outside is passed on to the menu by its rows.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget().windowHandle(), &event);
  }

  /// Whether all of the row is to be seen.
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
