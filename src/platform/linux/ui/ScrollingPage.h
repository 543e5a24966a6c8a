#pragma once

#include <QScrollArea>

namespace vembrix {

class FormPage;

/// A page that scrolls where it is higher than what shows it, with a scroller
/// over its margin that is there only then. No ground, no border. Main thread.
class ScrollingPage : public QScrollArea {
  Q_OBJECT

 public:
  /// Takes the page.
  explicit ScrollingPage(FormPage* page);

  [[nodiscard]] FormPage& page() const { return *page_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  FormPage* page_;
};

}  // namespace vembrix
