#pragma once

#include <string>
#include <vector>

#include "platform/SettingsWindow.h"

namespace vembrix {

/// A settings window that records its content and through which a test acts as a user does. Calls
/// for a control that is not on the shown page throw std::out_of_range.
class RecordingSettingsWindow : public SettingsWindow {
 public:
  /// The window that exists now, or null.
  static RecordingSettingsWindow* current();

  RecordingSettingsWindow(Size contentSize, std::string_view title);
  ~RecordingSettingsWindow() override;
  RecordingSettingsWindow(const RecordingSettingsWindow&) = delete;
  RecordingSettingsWindow& operator=(const RecordingSettingsWindow&) = delete;

  void setTabClickHandler(std::function<void(int index)> handler) override;
  void setContent(SettingsContent content) override;
  void setPage(ThemedPage page) override;
  void setStatus(const ControlID& id, std::string_view text) override;
  void setEnabled(const ControlID& id, bool isEnabled) override;
  void show() override { isShown_ = true; }

  Size contentSize() const { return contentSize_; }
  const std::string& title() const { return title_; }
  bool isShown() const { return isShown_; }
  /// Number of times that the whole content was replaced.
  int contentCount() const { return contentCount_; }
  const SettingsContent& content() const { return content_; }
  /// Null if the content is of the other kind.
  const PlainContent* plain() const { return std::get_if<PlainContent>(&content_.body); }
  const ThemedContent* themed() const { return std::get_if<ThemedContent>(&content_.body); }

  /// The tab whose page is in front.
  const SettingsTab& tab() const;
  /// The texts of the tabs.
  std::vector<std::string> tabLabels() const;

  // The controls of the shown page, by the label of the row, title or id.

  const Slider& slider(std::string_view label) const;
  const Popup& popup(std::string_view label) const;
  const Checkbox& checkbox(std::string_view title) const;
  const PushButton& button(std::string_view title) const;
  const ColorGrid& colorGrid() const;
  const StatusLabel& status(const ControlID& id) const;
  /// The text shown in the row of that label.
  const SelectableText& selectableText(std::string_view label) const;
  /// The item shown; empty for none.
  std::string selectedItem(std::string_view label) const;

  // The actions of a user. The control shows the new value before it reports it.

  void clickTab(int index);
  void drag(std::string_view sliderLabel, double value);
  void toggle(std::string_view checkboxTitle);
  void choose(std::string_view popupLabel, int index);
  void choose(std::string_view popupLabel, std::string_view title);
  /// Does nothing if the button is disabled.
  void click(std::string_view buttonTitle);
  void pickColor(int index, const Color& color);
  void close() { isShown_ = false; }

 private:
  Size contentSize_;
  std::string title_;
  std::function<void(int)> tabClicked_;
  SettingsContent content_;
  int contentCount_ = 0;
  bool isShown_ = false;
};

}  // namespace vembrix
