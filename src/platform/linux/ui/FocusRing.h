#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

namespace vembrix {

/// The ring around the control within `area` that has the keyboard. Lies over
/// the whole area, or the page that scrolls in it, so that no edge of what holds the
/// control cuts it off and it scrolls along. Main thread.
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
  /// What it lies over.
  [[nodiscard]] QWidget* stageOf(const QWidget& control) const;

  QWidget& area_;
  QPointer<QWidget> control_;
  /// The control and what it moves with.
  std::vector<QPointer<QWidget>> watched_;
};

}  // namespace vembrix
