#pragma once

#include <QPointer>
#include <QRectF>
#include <QWidget>
#include <vector>

namespace vembrix {

/// The ring around the control in `area` that has the keyboard. Covers the whole area, or the page
/// that scrolls in it, so that it scrolls with the control and no edge clips it. Main thread.
class FocusRing : public QWidget {
  Q_OBJECT

 public:
  /// What the ring is drawn around, in the control's coordinates; empty for none.
  struct Shape {
    QRectF rect;
    double radius = 0;
    bool operator==(const Shape&) const = default;
  };

  /// The area owns the ring as its parent.
  explicit FocusRing(QWidget* area);
  ~FocusRing() override;

  bool eventFilter(QObject* object, QEvent* event) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void follow(QWidget* control);
  void place();
  /// Returns the widget that the ring covers.
  [[nodiscard]] QWidget* stageOf(const QWidget& control) const;

  QWidget& area_;
  QPointer<QWidget> control_;
  /// The ring at the latest painting.
  Shape drawn_;
  /// The control and the widgets with which it moves.
  std::vector<QPointer<QWidget>> watched_;
};

}  // namespace vembrix
