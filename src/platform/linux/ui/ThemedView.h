#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "platform/SettingsWindow.h"

namespace vembrix {

class CardView;
class FormPage;
class ScrollingPage;
class PillTabButton;

/// A themed page: tab buttons, backdrop and page. Main thread.
class ThemedView : public QWidget {
  Q_OBJECT

 public:
  ThemedView(const ThemedContent& content, const std::function<void(int)>& tabClicked,
             QWidget* parent);

  void setPage(const ThemedPage& page);

  [[nodiscard]] std::vector<FormPage*> pages() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void showForm(const SettingsForm& form);
  void layOutButtons();
  /// Returns the frame of the page or its card.
  [[nodiscard]] QRect contentRect() const;

  Backdrop backdrop_;
  NavigationLayout navigation_;
  std::vector<PillTabButton*> buttons_;
  CardView* card_ = nullptr;
  ScrollingPage* page_ = nullptr;
};

}  // namespace vembrix
