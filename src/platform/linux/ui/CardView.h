#pragma once

#include <QWidget>

#include "platform/SettingsWindow.h"

namespace vembrix {

/// A card with a page in it, edge to edge. What a page holds keeps clear of the
/// corners by the page's own margins, so that nothing need be clipped there.
/// Main thread.
class CardView : public QWidget {
  Q_OBJECT

 public:
  CardView(const Card& card, QWidget* parent);

  /// Takes the page in place of the one before, which goes when the events
  /// under way are done with it.
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
