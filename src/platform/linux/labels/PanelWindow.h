#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRegion>
#include <QString>
#include <cstdint>
#include <memory>

namespace vembrix {

class PanelConnection;

/// A window of the X server's that no window manager knows of (override-redirect) and
/// that input goes through. The server keeps its picture and draws it by itself, so that
/// showing, fading and hiding cost one request each and wait for no answer. Lengths and
/// places in pixels of the server. Main thread; needs a Qt application.
///
/// Other programs may hide or destroy any window: the next one that is made is as good.
class PanelWindow {
 public:
  /// Out of sight, without a picture. Null without an X server that can show it.
  static std::unique_ptr<PanelWindow> create(const QString& role);

  ~PanelWindow();
  PanelWindow(const PanelWindow&) = delete;
  PanelWindow& operator=(const PanelWindow&) = delete;

  /// Whether another program has destroyed it. Reads what the server has told; does not
  /// wait.
  [[nodiscard]] bool isLost();
  /// Whether what is behind it may shine through, given a compositor.
  [[nodiscard]] bool canBeTranslucent() const;

  // What it is already costs nothing.

  void setName(const QString& name);
  void setGeometry(const QRect& geometry);

  /// Of the window's size, premultiplied.
  void setPicture(const QImage& picture);
  /// Over a part of the picture, for as long as nothing is drawn over it and nothing
  /// comes between.
  void paint(const QImage& part, const QPoint& corner);
  /// Of the picture; 0 before there is one.
  [[nodiscard]] std::int64_t bytes() const { return bytes_; }

  /// Cuts the window out; an empty region is no shape at all.
  void setShape(const QRegion& shape);

  /// How wide the shadow is that its picture has within its edges, for who looks for the
  /// panel or would add another shadow.
  void setShadow(int extent);

  /// From 0 to 1, for the compositor.
  void setOpacity(double opacity);
  /// Comes up in front of all others.
  void show(double opacity);
  void raise();
  void hide();

 private:
  explicit PanelWindow(std::shared_ptr<PanelConnection> connection, const QString& role);
  void put(std::uint32_t drawable, const QImage& picture, const QPoint& corner) const;
  void sendOpacity(double opacity);
  void putInFront() const;

  std::shared_ptr<PanelConnection> connection_;
  std::uint32_t id_;
  QString name_;
  QRect geometry_;
  double opacity_ = -1;
  std::int64_t bytes_ = 0;
};

}  // namespace vembrix
