#include <QEvent>
#include <QGuiApplication>
#include <QObject>
#include <QWindow>
#include <algorithm>

#include "platform/linux/menubar/strip/StatusStripTest.h"

namespace vembrix {
namespace {

/// Counts the new sizes that Qt learns of from the X server.
class SizeReports : public QObject {
 public:
  explicit SizeReports(xcb_window_t window) {
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto found = std::ranges::find_if(
        windows, [&](QWindow* each) { return each->handle() && each->winId() == window; });
    EXPECT_NE(found, windows.end());
    if (found != windows.end()) (*found)->installEventFilter(this);
  }

  [[nodiscard]] int count() const { return count_; }

  bool eventFilter(QObject* /*object*/, QEvent* event) override {
    if (event->type() == QEvent::Resize) count_ += 1;
    return false;
  }

 private:
  int count_ = 0;
};

/// A strip whose window manager has done all that was asked of it so far.
class StripReportsTest : public StatusStripTest {
 protected:
  StripReportsTest() {
    show(narrow());
    settle();
    for (int width = 150; width <= 190; width += 10) take(width);
  }

  void setWidth(int width) {
    StatusItemContent content = titled(" A ");
    content.length = StatusItemLength::fixed(width);
    item_->setContent(content);
  }
  void take(int width) {
    setWidth(width);
    EXPECT_TRUE(runUntilGeometry({1440 - width, 0, width, 24}));
    // The report has been sent, and may not have been read.
    runFor(std::chrono::milliseconds(50));
  }
  /// Takes the width that expectRestored() expects.
  void takeUsualWidth() { take(140); }
};

TEST_F(StripReportsTest, NoNewSizeReachesQt) {
  SizeReports reports(strip_);
  for (int width = 200; width <= 240; width += 10) take(width);
  EXPECT_EQ(reports.count(), 0);
}

TEST_F(StripReportsTest, ASizeThatAnotherProgramSetsReachesQtAndIsTakenBack) {
  SizeReports reports(strip_);
  client().resize(strip_, 120, 30);
  EXPECT_TRUE(runUntil([&] { return reports.count() > 0; }));
  EXPECT_TRUE(runUntilGeometry({1250, 0, 190, 24}));
}

TEST_F(StripReportsTest, AfterASurpriseTheNextSizesReachQt) {
  client().resize(strip_, 120, 30);
  EXPECT_TRUE(runUntilGeometry({1250, 0, 190, 24}));
  settle();
  SizeReports reports(strip_);
  take(200);
  EXPECT_TRUE(runUntil([&] { return reports.count() > 0; }));
}

TEST_F(StripReportsTest, HintsThatAreTakenComeBack) {
  takeUsualWidth();
  settle();
  client().deleteProperty(strip_, "_NET_WM_STRUT");
  client().deleteProperty(strip_, "_NET_WM_STRUT_PARTIAL");
  expectRestored();
}

TEST_F(StripReportsTest, HintsComeBackAlsoAfterTheWindowManagerHasHung) {
  display_.stopWindowManager();
  setWidth(140);
  runFor(std::chrono::milliseconds(300));
  display_.resumeWindowManager();
  EXPECT_TRUE(runUntilGeometry({1300, 0, 140, 24}));
  settle();
  client().deleteProperty(strip_, "_NET_WM_STRUT_PARTIAL");
  expectRestored();
}

TEST_F(StripReportsTest, QuickChangesEndInTheLastSize) {
  for (int round = 0; round < 20; ++round) {
    for (int width = 150; width <= 250; width += 20) setWidth(width);
    setWidth(140);
  }
  EXPECT_TRUE(runUntilGeometry({1300, 0, 140, 24}));
  settle();
  EXPECT_EQ(geometry(), (X11Client::Geometry{1300, 0, 140, 24}));
}

TEST_F(StripReportsTest, TheNextWindowManagerIsDependableOnlyLater) {
  display_.killWindowManager();
  setWidth(140);
  display_.startWindowManager();
  EXPECT_TRUE(runUntilGeometry({1300, 0, 140, 24}));
  settle();
  SizeReports reports(strip_);
  take(200);
  EXPECT_TRUE(runUntil([&] { return reports.count() > 0; }));
}

}  // namespace
}  // namespace vembrix
