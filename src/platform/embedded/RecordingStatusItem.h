#pragma once

#include "platform/DropdownMenu.h"
#include "platform/StatusItem.h"

namespace vembrix {

/// A status item that keeps what it was told.
class RecordingStatusItem : public StatusItem {
 public:
  /// The item that exists now, or null.
  static RecordingStatusItem* current();
  /// Whether items made from now on get a button.
  static void giveButton(bool given);

  RecordingStatusItem();
  ~RecordingStatusItem() override;
  RecordingStatusItem(const RecordingStatusItem&) = delete;
  RecordingStatusItem& operator=(const RecordingStatusItem&) = delete;

  bool hasButton() const override { return hasButton_; }
  void setContent(const StatusItemContent& content) override;
  void setMenu(std::unique_ptr<DropdownMenu> menu) override { menu_ = std::move(menu); }
  DropdownMenu* menu() const override { return menu_.get(); }
  void openMenu() override;

  /// What was shown last.
  const StatusItemContent& content() const { return content_; }
  /// How often content was set, and how often it was another than before.
  int setCount() const { return setCount_; }
  int changeCount() const { return changeCount_; }

  /// The text of the title; empty for an icon.
  std::string title() const;
  /// The title's own colour, or nothing for a plain title or an icon.
  std::optional<Color> textColor() const;

 private:
  bool hasButton_;
  StatusItemContent content_;
  std::unique_ptr<DropdownMenu> menu_;
  int setCount_ = 0;
  int changeCount_ = 0;
};

}  // namespace vembrix
