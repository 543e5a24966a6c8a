#include "platform/linux/menubar/VembrixSpaceRowView.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "menubar/SpaceRow.h"
#include "platform/linux/support/DropdownUser.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Srgb kRed{1, 0, 0};
constexpr Srgb kBlue{0, 0, 1};

bool areAlike(const QColor& a, const QColor& b, int tolerance = 3) {
  return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance &&
         std::abs(a.blue() - b.blue()) <= tolerance;
}

/// The product's rows, in an open menu.
class VembrixSpaceRowViewTest : public testing::Test {
 protected:
  using Desktop = SpaceRow::Desktop;

  static Desktop desktopOf(const std::string& name) {
    return {.displayName = name, .isActive = false, .dotColor = kRed, .heatGlow = {}};
  }

  /// The first of the rows.
  VembrixSpaceRowView& open(const std::vector<Desktop>& desktops) {
    std::vector<MenuItem> items;
    items.reserve(desktops.size() + 2);
    for (const Desktop& desktop : desktops) items.emplace_back(rowOf(desktop));
    items.emplace_back(MenuSeparator{});
    items.emplace_back(
        MenuCommand{.title = "Quit", .font = {}, .keyEquivalent = "q", .action = [this] {
                      events_.emplace_back("quit");
                    }});
    user_.open(std::move(items));
    return user_.row(0);
  }

  VembrixSpaceRowView& open() {
    return open({desktopOf("Mail"), desktopOf("Web"), desktopOf("Code")});
  }

  /// The first row, with its name being edited.
  VembrixSpaceRowView& edit() {
    VembrixSpaceRowView& row = open();
    user_.clickPencil(row);
    return row;
  }

  std::unique_ptr<SpaceRowView> rowOf(const Desktop& desktop) {
    return SpaceRow::create(
        desktop,
        {.onSwitch = [this, name = desktop.displayName] { events_.push_back("to " + name); },
         .onCommitRename = [this](std::string_view name) { names_.emplace_back(name); }});
  }

  /// What happened, when nothing more is about to.
  const std::vector<std::string>& events() {
    runFor(std::chrono::milliseconds(20));
    return events_;
  }

  DropdownUser user_;
  std::vector<std::string> events_;
  std::vector<std::string> names_;
};

// Under the pointer.

TEST_F(VembrixSpaceRowViewTest, ThePointerBringsTheButtonAndATintAndTakesThemWithIt) {
  VembrixSpaceRowView& row = open();
  const QPoint ground(row.width() / 2 + 40, 2);
  const QColor idle = pictureOf(row, Qt::white).pixelColor(ground);
  EXPECT_FALSE(row.renameButton().isVisible());
  user_.pointAt(row);
  EXPECT_TRUE(row.renameButton().isVisible());
  EXPECT_FALSE(areAlike(pictureOf(row, Qt::white).pixelColor(ground), idle));
  user_.pointAt(user_.row(1));
  EXPECT_FALSE(row.renameButton().isVisible());
  EXPECT_TRUE(user_.row(1).renameButton().isVisible());
  EXPECT_EQ(pictureOf(row, Qt::white).pixelColor(ground), idle);
}

TEST_F(VembrixSpaceRowViewTest, TheButtonIsBackUnderAPointerThatRestsWhenEditingEnds) {
  VembrixSpaceRowView& row = edit();
  user_.key(Qt::Key_Return);
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_TRUE(runUntil([&] { return row.renameButton().isVisible(); }));
}

TEST_F(VembrixSpaceRowViewTest, NoButtonComesBackWhereThePointerHasLeftDuringEditing) {
  VembrixSpaceRowView& row = edit();
  user_.pointAt(user_.row(1));
  user_.key(Qt::Key_Return);
  runFor(std::chrono::milliseconds(100));
  EXPECT_FALSE(row.renameButton().isVisible());
}

TEST_F(VembrixSpaceRowViewTest, ClosingTheMenuTakesTheTintAway) {
  VembrixSpaceRowView& row = open();
  user_.pointAt(row);
  user_.key(Qt::Key_Escape);
  EXPECT_FALSE(row.state().background);
  EXPECT_FALSE(row.state().showsRenameButton);
}

// Clicks.

TEST_F(VembrixSpaceRowViewTest, AClickOnTheDotClosesTheMenuAndSwitches) {
  user_.click(open(), DropdownUser::kDot);
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("to Mail"));
}

TEST_F(VembrixSpaceRowViewTest, AClickOnTheNameClosesTheMenuAndSwitches) {
  open();
  user_.click(user_.row(1));
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(events(), ElementsAre("to Web"));
}

TEST_F(VembrixSpaceRowViewTest, AClickOnThePencilDoesNotSwitch) {
  edit();
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, APressThatIsReleasedElsewhereDoesNothing) {
  VembrixSpaceRowView& row = open();
  user_.press(row);
  user_.release(user_.row(1));
  user_.press(row);
  user_.release(QPoint(-50, 12));
  user_.press(row);
  user_.release(user_.widget().actionGeometry(user_.widget().actions().back()).center());
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, APencilThatIsReleasedElsewhereDoesNothing) {
  VembrixSpaceRowView& row = open();
  user_.pointAt(row);
  user_.press(row, row.renameButton().geometry().center());
  user_.release(row);
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, ClicksOnARowThatIsEditedDoNotSwitch) {
  VembrixSpaceRowView& row = edit();
  user_.click(row, DropdownUser::kDot);
  user_.click(row, row.editField().geometry().center());
  EXPECT_TRUE(user_.isOpen());
  EXPECT_TRUE(row.state().isEditing);
  EXPECT_THAT(events(), IsEmpty());
}

// Editing.

TEST_F(VembrixSpaceRowViewTest, ThePencilBeginsEditingWithTheWholeNameSelected) {
  VembrixSpaceRowView& row = edit();
  EXPECT_TRUE(row.editField().isVisible());
  EXPECT_FALSE(row.renameButton().isVisible());
  EXPECT_EQ(row.editedText(), "Mail");
  EXPECT_EQ(row.editField().selectedText(), "Mail");
  EXPECT_EQ(user_.widget().focusWidget(), &row.editField());
}

TEST_F(VembrixSpaceRowViewTest, ReturnTakesWhatWasTyped) {
  VembrixSpaceRowView& row = edit();
  user_.type("Work 2");
  user_.key(Qt::Key_Return);
  EXPECT_THAT(names_, ElementsAre("Work 2"));
  EXPECT_EQ(row.state().label, "Work 2");
  EXPECT_FALSE(row.editField().isVisible());
  EXPECT_TRUE(user_.isOpen());
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, EnterOnTheKeypadTakesWhatWasTyped) {
  VembrixSpaceRowView& row = edit();
  user_.type("Play");
  user_.key(Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_THAT(names_, ElementsAre("Play"));
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_TRUE(user_.isOpen());
}

TEST_F(VembrixSpaceRowViewTest, EscapeLeavesTheNameAndThenTheMenu) {
  VembrixSpaceRowView& row = edit();
  user_.type("Play");
  user_.key(Qt::Key_Escape);
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_EQ(row.state().label, "Mail");
  EXPECT_TRUE(user_.isOpen());
  user_.key(Qt::Key_Escape);
  EXPECT_FALSE(user_.isOpen());
  EXPECT_THAT(names_, IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, TheCaretMovesAndSelectsAsInAnyField) {
  VembrixSpaceRowView& row = edit();
  user_.key(Qt::Key_Home);
  user_.type("E");
  user_.key(Qt::Key_End);
  user_.key(Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(row.editField().selectedText(), "l");
  user_.type("n");
  user_.key(Qt::Key_Left);
  user_.key(Qt::Key_Backspace);
  EXPECT_EQ(row.editedText(), "EMan");
  user_.key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(row.editField().selectedText(), "EMan");
}

TEST_F(VembrixSpaceRowViewTest, TakesWhatIsPasted) {
  VembrixSpaceRowView& row = edit();
  QGuiApplication::clipboard()->setText(QStringLiteral("Büro"));
  user_.key(Qt::Key_V, Qt::ControlModifier);
  user_.key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(row.editedText(), "BüroBüro");
}

TEST_F(VembrixSpaceRowViewTest, TakesWhatAnInputMethodCommits) {
  VembrixSpaceRowView& row = edit();
  QInputMethodEvent composing(QStringLiteral("にほ"), {});
  QCoreApplication::sendEvent(&row.editField(), &composing);
  EXPECT_EQ(row.editedText(), "");
  QInputMethodEvent committing;
  committing.setCommitString(QStringLiteral("🛠"));
  QCoreApplication::sendEvent(&row.editField(), &committing);
  user_.key(Qt::Key_Return);
  EXPECT_THAT(names_, ElementsAre("🛠"));
}

TEST_F(VembrixSpaceRowViewTest, NoKeyMovesTheMenusHighlightWhileANameIsEdited) {
  VembrixSpaceRowView& row = edit();
  const QAction* const highlighted = user_.widget().activeAction();
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Tab,
                            Qt::Key_Backtab, Qt::Key_Down}) {
    user_.key(key);
    EXPECT_EQ(user_.widget().activeAction(), highlighted) << key;
    EXPECT_EQ(user_.widget().focusWidget(), &row.editField()) << key;
  }
  EXPECT_TRUE(row.state().isEditing);
  EXPECT_EQ(row.editedText(), "Mail");
  EXPECT_FALSE(user_.row(1).state().background);
}

TEST_F(VembrixSpaceRowViewTest, NoKeyIsACommandWhileANameIsEdited) {
  VembrixSpaceRowView& row = edit();
  user_.key(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_TRUE(user_.isOpen());
  EXPECT_TRUE(row.state().isEditing);
  EXPECT_THAT(events(), IsEmpty());
}

TEST_F(VembrixSpaceRowViewTest, ThePointerOnOtherRowsLeavesTheKeyboardToTheField) {
  VembrixSpaceRowView& row = edit();
  user_.pointAt(user_.row(2));
  user_.type("Play");
  user_.key(Qt::Key_Return);
  EXPECT_THAT(names_, ElementsAre("Play"));
  EXPECT_EQ(row.state().label, "Play");
}

TEST_F(VembrixSpaceRowViewTest, OneNameIsEditedAtATime) {
  VembrixSpaceRowView& first = edit();
  user_.type("Play");
  user_.clickPencil(user_.row(1));
  EXPECT_FALSE(first.state().isEditing);
  EXPECT_EQ(first.state().label, "Mail");
  EXPECT_TRUE(user_.row(1).state().isEditing);
  EXPECT_THAT(names_, IsEmpty());
  user_.type("News");
  user_.key(Qt::Key_Return);
  EXPECT_THAT(names_, ElementsAre("News"));
}

TEST_F(VembrixSpaceRowViewTest, ClosingTheMenuEndsTheEditingWithoutAName) {
  VembrixSpaceRowView& row = edit();
  user_.type("Play");
  user_.widget().close();
  EXPECT_FALSE(row.state().isEditing);
  EXPECT_EQ(row.state().label, "Mail");
  EXPECT_THAT(names_, IsEmpty());
}

// Accessibility.

struct Told {
  QString name;
  QString description;
};

Told toldOf(QWidget& widget) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
  return {interface->text(QAccessible::Name), interface->text(QAccessible::Description)};
}

TEST_F(VembrixSpaceRowViewTest, TellsItsNameAndWhatItsDotMeans) {
  Desktop active = desktopOf("Mail & Web");
  active.isActive = true;
  Desktop warm = desktopOf("🛠");
  warm.heatGlow = kBlue;
  open({active, warm, desktopOf("Code")});
  EXPECT_EQ(toldOf(user_.row(0)).name, "Mail & Web");
  EXPECT_EQ(toldOf(user_.row(0)).description, "current");
  EXPECT_EQ(toldOf(user_.row(1)).name, "🛠");
  EXPECT_EQ(toldOf(user_.row(1)).description, "recently used");
  EXPECT_EQ(toldOf(user_.row(2)).description, "");
}

TEST_F(VembrixSpaceRowViewTest, TheMenuLeadsToItsNameAndWhatItsDotMeans) {
  Desktop active = desktopOf("Mail");
  active.isActive = true;
  open({active, desktopOf("Code")});
  QAccessibleInterface* menu = QAccessible::queryAccessibleInterface(&user_.widget());
  EXPECT_EQ(menu->child(0)->text(QAccessible::Name), "Mail");
  EXPECT_EQ(menu->child(0)->text(QAccessible::Description), "current");
  EXPECT_TRUE(menu->child(0)->state().checked);
  EXPECT_FALSE(menu->child(1)->state().checked);
  EXPECT_EQ(menu->child(1)->text(QAccessible::Name), "Code");
  user_.clickPencil(user_.row(1));
  user_.type("Play");
  user_.key(Qt::Key_Return);
  EXPECT_EQ(menu->child(1)->text(QAccessible::Name), "Play");
}

TEST_F(VembrixSpaceRowViewTest, TheButtonTellsWhatItDoes) {
  VembrixSpaceRowView& row = open();
  user_.pointAt(row);
  EXPECT_EQ(toldOf(row.renameButton()).name, "Rename");
  EXPECT_EQ(row.renameButton().toolTip(), "Rename");
  QAccessibleInterface* button = QAccessible::queryAccessibleInterface(&row.renameButton());
  EXPECT_EQ(button->role(), QAccessible::Button);
  button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(runUntil([&] { return row.state().isEditing; }));
}

TEST_F(VembrixSpaceRowViewTest, TellsItsNewNameAfterARename) {
  VembrixSpaceRowView& row = edit();
  user_.type("Work");
  user_.key(Qt::Key_Return);
  EXPECT_EQ(toldOf(row).name, "Work");
}

// How it looks.

/// The columns of a row right of its dot and left of its button in which
/// something is drawn, from the first to the last.
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

/// The dot of a desktop, drawn with so many pixels per point.
class SpaceRowDotTest : public VembrixSpaceRowViewTest, public testing::WithParamInterface<int> {
 protected:
  void draw(const Desktop& desktop) {
    picture_ = pictureOf(open({desktop}), Qt::white, GetParam());
  }

  /// That far to the right of the dot's centre, in points.
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
  // The stroke of 1.5 points lies half outside a radius of 6: from 5.25 to 6.75.
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
