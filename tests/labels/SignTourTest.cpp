#include <gmock/gmock.h>

#include "platform/embedded/faces/RecordingTourOverlay.h"
#include "platform/embedded/services/EmbeddedApplication.h"
#include "support/SignTest.h"

namespace vembrix {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SignTourTest : public SignTest {
 protected:
  static void startTour() { NotificationCenter::defaultCenter().post(SpaceManager::tourWillStart); }
  static void endTour() { NotificationCenter::defaultCenter().post(SpaceManager::tourDidEnd); }
  static const std::vector<RecordingTourOverlay::Window*>& overlays() {
    return RecordingTourOverlay::windows();
  }
  static RecordingTourOverlay::Window& overlay() { return *overlays().at(0); }
};

TEST_F(SignTourTest, NoOverlayBeforeATour) {
  begin();
  EXPECT_THAT(overlays(), IsEmpty());
}

TEST_F(SignTourTest, TheOverlayIsADarkPillInTheMiddleOfTheScreen) {
  begin();
  startTour();
  const TourOverlayContent& content = overlay().content();
  EXPECT_EQ(content.frame, (Rect{460, 402, 520, 96}));
  EXPECT_EQ(content.fill, (Srgb{0, 0, 0, 0.72}));
  EXPECT_EQ(content.cornerRadius, 48);
  EXPECT_EQ(content.spinnerSize, 24);
  EXPECT_EQ(content.text, "Initializing desktops, stand by");
  EXPECT_EQ(content.font, (Font{.weight = Font::Weight::Semibold, .size = 22}));
  EXPECT_EQ(content.textColor, kWhite);
  EXPECT_EQ(content.spacing, 16);
  EXPECT_EQ(content.padding, 28);
}

TEST_F(SignTourTest, TheOverlayStandsAboveTheLabelsInEverySpace) {
  begin();
  startTour();
  EXPECT_EQ(overlay().content().level, WindowLevel::Status);
  EXPECT_EQ(static_cast<int>(overlay().content().level), 25);
  EXPECT_EQ(overlay().content().collectionBehavior, 81U);
  EXPECT_THAT(desktop_.windows().spacesOf(std::array{overlay().number()}, desktop_.spaceIDs()),
              SizeIs(4));
}

TEST_F(SignTourTest, TheOverlayIsInTheMiddleOfTheMainScreen) {
  desktop_.addDisplay({.identifier = "Second", .frame = {1440, 100, 1000, 500}});
  begin();
  desktop_.activate(desktop_.spaceIDs().back());
  startTour();
  EXPECT_EQ(overlay().content().frame, (Rect{1440 + 500 - 260, 100 + 250 - 48, 520, 96}));
}

TEST_F(SignTourTest, TheOverlayFadesInOver200ms) {
  begin();
  startTour();
  EXPECT_TRUE(overlay().isOrderedIn());
  EXPECT_EQ(overlay().alphaValue(), 0);
  advance(100);
  EXPECT_DOUBLE_EQ(overlay().alphaValue(), 0.5);
  advance(99);
  EXPECT_LT(overlay().alphaValue(), 1);
  advance(1);
  EXPECT_EQ(overlay().alphaValue(), 1);
}

TEST_F(SignTourTest, TheOverlayFadesOutOver250msAndIsOrderedOut) {
  begin();
  startTour();
  advance(1000);
  endTour();
  EXPECT_EQ(overlay().alphaValue(), 1);
  advance(125);
  EXPECT_DOUBLE_EQ(overlay().alphaValue(), 0.5);
  advance(124);
  EXPECT_TRUE(overlay().isOrderedIn());
  advance(1);
  EXPECT_THAT(overlays(), IsEmpty());
}

TEST_F(SignTourTest, TheOverlayComesAndGoesAtOnceWhereTheUserWantsLessMotion) {
  EmbeddedApplication::shared().setReducesMotion(true);
  begin();
  startTour();
  EXPECT_EQ(overlay().alphaValue(), 1);
  endTour();
  turn();
  EXPECT_THAT(overlays(), IsEmpty());
}

TEST_F(SignTourTest, ATourThatEndsBeforeTheFadeInIsOverStillEndsWithTheOverlayOrderedOut) {
  begin();
  startTour();
  advance(50);
  endTour();
  EXPECT_DOUBLE_EQ(overlay().alphaValue(), 0.25);
  advance(125);
  EXPECT_DOUBLE_EQ(overlay().alphaValue(), 0.125);
  advance(125);
  EXPECT_THAT(overlays(), IsEmpty());
  advance(1000);
  EXPECT_THAT(overlays(), IsEmpty());
}

TEST_F(SignTourTest, ATourThatEndsAtOnceLeavesNoOverlay) {
  begin();
  startTour();
  endTour();
  advance(250);
  EXPECT_THAT(overlays(), IsEmpty());
}

TEST_F(SignTourTest, ASecondStartHidesTheLabelsAgainAndMakesNoSecondOverlay) {
  beginWithAllLabels();
  startTour();
  controller_->showAll();
  advance(500);
  ASSERT_EQ(alpha(1), 1.0);
  startTour();
  EXPECT_THAT(overlays(), SizeIs(1));
  EXPECT_THAT(alphas(), Each(0));
}

TEST_F(SignTourTest, ATourDuringTheFadeOutOfTheFormerHasAnOverlayOfItsOwn) {
  begin();
  startTour();
  advance(300);
  endTour();
  advance(100);
  startTour();
  EXPECT_THAT(overlays(), SizeIs(2));
  advance(1000);
  ASSERT_THAT(overlays(), SizeIs(1));
  EXPECT_EQ(overlay().alphaValue(), 1);
}

TEST_F(SignTourTest, AnEndWithoutAStartIsNothing) {
  beginWithAllLabels(2);
  endTour();
  advance(2000);
  EXPECT_THAT(overlays(), IsEmpty());
  EXPECT_THAT(alphas(2), ElementsAre(0, 0.78));
}

TEST_F(SignTourTest, LabelsAreAt0FromTheStartAndWithoutFading) {
  beginWithAllLabels();
  startTour();
  EXPECT_THAT(alphas(), Each(0));
  for (std::size_t place = 0; place < 4; ++place) EXPECT_FALSE(label(place).isAnimating());
}

TEST_F(SignTourTest, AFadeUnderWayEndsAt0WhenATourStarts) {
  beginWithAllLabels();
  goTo(1);
  advance(100);
  startTour();
  EXPECT_THAT(alphas(), Each(0));
}

TEST_F(SignTourTest, PrimingAndSwipesLeaveTheLabelsAloneDuringATour) {
  beginWithAllLabels();
  startTour();
  advance(600);
  desktop_.wake();
  controller_->handleSwipeBegan(ISSDirection::Right);
  turn();
  EXPECT_THAT(alphas(), Each(0));
}

TEST_F(SignTourTest, ASwipeDuringATourMakesNoLabel) {
  begin();
  startTour();
  controller_->handleSwipeBegan(ISSDirection::Right);
  EXPECT_EQ(labelCount(), 1U);
}

TEST_F(SignTourTest, MissionControlDuringATourShowsNoLabels) {
  beginWithAllLabels();
  startTour();
  setMissionControl(true);
  advance(1000);
  EXPECT_THAT(alphas(), Each(0));
}

TEST_F(SignTourTest, ActivationsDuringATourMakeLabelsAndKeepAllAt0) {
  begin();
  startTour();
  for (std::size_t place = 1; place < 4; ++place) {
    advance(300);
    goTo(place);
    turn();
    EXPECT_EQ(labelCount(), place + 1);
    EXPECT_THAT(alphas(place + 1), Each(0));
    EXPECT_FALSE(label(place).isAnimating()) << "no flash";
  }
}

TEST_F(SignTourTest, LabelsOfTheOthersAreBackAtTheNextTickAfterATour) {
  beginWithAllLabels();
  startTour();
  advance(250);
  endTour();
  EXPECT_THAT(alphas(), Each(0));
  advance(249);
  EXPECT_THAT(alphas(), Each(0));
  advance(1);
  EXPECT_THAT(alphas(), ElementsAre(0, 0.78, 0.78, 0.78));
}

TEST_F(SignTourTest, ADesktopThatVanishesDuringATourTakesItsLabelAlong) {
  beginWithAllLabels();
  startTour();
  desktop_.setSpaceCount(2);
  manager_.reload();
  EXPECT_EQ(labelCount(), 2U);
  endTour();
  advance(500);
  EXPECT_THAT(alphas(2), ElementsAre(0, 0.78));
}

TEST_F(SignTourTest, TheRealTourMakesALabelInEveryDesktop) {
  begin(5);
  manager_.performAutoTour([] {});
  while (!overlays().empty()) {
    advance(20);
    for (const RecordingSignWindow* window : RecordingSignWindow::all()) {
      ASSERT_TRUE(window->alphaValue() == 0 || window->alphaValue() == 0.78);
    }
  }
  advance(500);
  EXPECT_EQ(labelCount(), 5U);
  EXPECT_EQ(desktop_.activeSpace(), space(0));
  EXPECT_THAT(alphas(5), ElementsAre(0, 0.78, 0.78, 0.78, 0.78));
}

TEST_F(SignTourTest, AnOverlayGoesWithTheController) {
  begin();
  startTour();
  controller_.reset();
  EXPECT_THAT(overlays(), IsEmpty());
  EXPECT_EQ(labelCount(), 0U);
}

}  // namespace
}  // namespace vembrix
