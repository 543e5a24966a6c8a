#pragma once

#include <QScrollArea>

namespace vembrix {

class FormPage;

/// A page that scrolls if it is too high, with a scroller over its margin that appears only then.
/// No background, no border. Main thread.
class ScrollingPage : public QScrollArea {
  Q_OBJECT

 public:
  /// Takes ownership of the page.
  explicit ScrollingPage(FormPage* page);

  [[nodiscard]] FormPage& page() const { return *page_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  FormPage* page_;
};

}  // namespace vembrix
