#pragma once

#include <QWidget>

#include "platform/SettingsWindow.h"

namespace vembrix {

/// A card that a page fills edge to edge. The page's own margins keep its contents clear of the
/// corners, so the card does not clip. Main thread.
class CardView : public QWidget {
  Q_OBJECT

 public:
  CardView(const Card& card, QWidget* parent);

  /// Takes ownership of the page. Deletes the former one after the current events.
  void setPage(QWidget* page);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] int cornerSize() const;
  void paintFill(QPainter& painter, const QColor& color) const;
  void paintStroke(QPainter& painter, const QColor& color) const;
  void paintCorners(QPainter& painter, double inset) const;

  Card card_;
  QWidget* page_ = nullptr;
};

}  // namespace vembrix
