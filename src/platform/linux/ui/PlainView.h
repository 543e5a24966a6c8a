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

  [[nodiscard]] std::vector<FormPage*> pages() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// The ground that the pages stand on.
  [[nodiscard]] QRect pane() const;
  void showPage(int index);

  int inset_;
  SegmentedTabBar* tabs_;
  std::vector<ScrollingPage*> pages_;
};

}  // namespace vembrix
