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

  /// All of them, in the tabs' order; makes those that were not shown yet.
  [[nodiscard]] std::vector<FormPage*> pages();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// The ground that the pages stand on.
  [[nodiscard]] QRect pane() const;
  /// Where it stands below the tabs.
  [[nodiscard]] QRect room() const;
  /// Made when it is first asked for: few of them are ever seen.
  ScrollingPage& page(std::size_t index);
  void showPage(int index);

  int inset_;
  SegmentedTabBar* tabs_;
  std::vector<SettingsForm> forms_;
  /// Null where it was not asked for yet.
  std::vector<ScrollingPage*> pages_;
};

}  // namespace vembrix
