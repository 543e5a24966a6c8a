#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/DropdownMenu.h"
#include "platform/linux/menubar/DropdownMenuTest.h"
#include "platform/linux/support/DropdownUser.h"

namespace vembrix {
namespace {

using testing::ElementsAre;
using Events = std::vector<std::string>;

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

}  // namespace
}  // namespace vembrix
