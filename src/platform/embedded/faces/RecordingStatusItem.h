#pragma once

#include "platform/DropdownMenu.h"
#include "platform/StatusItem.h"

namespace vembrix {

/// A status item that records its state.
class RecordingStatusItem : public StatusItem {
 public:
  /// The item that exists now, or null.
  static RecordingStatusItem* current();
  /// Sets whether later items get a button.
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

  /// The content shown last.
  const StatusItemContent& content() const { return content_; }
  /// Number of times that the content was set, and that it has changed.
  int setCount() const { return setCount_; }
  int changeCount() const { return changeCount_; }

  /// The text of the title; empty for an icon.
  std::string title() const;
  /// The title's own colour; empty for a plain title or an icon.
  std::optional<Color> textColor() const;

 private:
  bool hasButton_;
  StatusItemContent content_;
  std::unique_ptr<DropdownMenu> menu_;
  int setCount_ = 0;
  int changeCount_ = 0;
};

}  // namespace vembrix
