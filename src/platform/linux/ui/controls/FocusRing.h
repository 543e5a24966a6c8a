#pragma once

#include <QPointer>
#include <QRectF>
#include <QWidget>
#include <vector>

namespace vembrix {

/// The ring around the control in `area` that has the keyboard. Lies over the whole area, or the
/// page that scrolls in it, so that it scrolls with the control and no edge cuts it off. Main
/// thread.
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
  /// What it lies over.
  [[nodiscard]] QWidget* stageOf(const QWidget& control) const;

  QWidget& area_;
  QPointer<QWidget> control_;
  /// At the latest painting.
  Shape drawn_;
  /// The control and what it moves with.
  std::vector<QPointer<QWidget>> watched_;
};

}  // namespace vembrix
