#pragma once

#include <QString>
#include <QTextLayout>
#include <unordered_map>

#include "platform/StatusItem.h"

class QPainter;

namespace vembrix {

/// Lays out and paints the content of a status item. Lengths in points. Main thread; needs a Qt
/// application.
class StatusItemLabel {
 public:
  /// Height of the menu bar.
  static constexpr int kBarHeight = 24;

  StatusItemLabel();

  void setContent(const StatusItemContent& content);
  [[nodiscard]] const StatusItemContent& content() const { return content_; }

  /// Returns the item's width in whole points.
  [[nodiscard]] int width() const;

  /// Returns the content's accessible name: the title without surrounding blanks.
  [[nodiscard]] QString name() const;

  /// Paints an area of width() by kBarHeight at the origin.
  void paint(QPainter& painter, Appearance appearance);

 private:
  void setTitle(const QString& text);
  void layOut();
  void paintTitle(QPainter& painter);
  void paintImage(QPainter& painter, const TemplateImage& image) const;

  StatusItemContent content_;
  /// Empty for an image. Laid out when it is measured or painted for the first time.
  QTextLayout title_;
  double titleWidth_ = 0;
  /// The widths of earlier titles, so that a title that returns is not laid out again for its
  /// width.
  std::unordered_map<QString, double> widths_;
};

}  // namespace vembrix
