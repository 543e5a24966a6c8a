#pragma once

#include <QWidget>
#include <vector>

#include "platform/SettingsWindow.h"

namespace vembrix {

class FormPage;
class ScrollingPage;
class SegmentedTabBar;

/// The system's own tab view with its pages. Main thread.
class PlainView : public QWidget {
  Q_OBJECT

 public:
  PlainView(const PlainContent& content, QWidget* parent);

  /// Returns all pages, in the order of the tabs; creates those that were never shown.
  [[nodiscard]] std::vector<FormPage*> pages();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// Returns the background of the pages.
  [[nodiscard]] QRect pane() const;
  /// Returns the area below the tabs.
  [[nodiscard]] QRect room() const;
  /// Creates the page on first use, as few are ever seen.
  ScrollingPage& page(std::size_t index);
  void showPage(int index);

  int inset_;
  SegmentedTabBar* tabs_;
  std::vector<SettingsForm> forms_;
  /// Null for pages that are not created yet.
  std::vector<ScrollingPage*> pages_;
};

}  // namespace vembrix
