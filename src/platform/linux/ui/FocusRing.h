#pragma once

#include <QPointer>
#include <QWidget>

namespace vembrix {

/// The ring around the control within `area` that has the keyboard. Lies over
/// the control's own parent, so that it scrolls along. Main thread.
class FocusRing : public QWidget {
  Q_OBJECT

 public:
  /// Its parent's, which is the area.
  explicit FocusRing(QWidget* area);
  ~FocusRing() override;

  bool eventFilter(QObject* object, QEvent* event) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void follow(QWidget* control);
  void place();

  QWidget& area_;
  QPointer<QWidget> control_;
};

}  // namespace vembrix
