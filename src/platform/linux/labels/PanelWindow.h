#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRegion>
#include <QString>
#include <chrono>
#include <cstdint>
#include <memory>
#include <span>

namespace vembrix {

class OpacityPlayer;
class PanelConnection;

/// An X window unknown to window managers (override-redirect) that lets input through. The server
/// keeps its picture and draws it, so that showing, fading and hiding cost one request each and
/// never wait. Lengths and positions in pixels of the server. Main thread; needs a Qt application.
///
/// Other programs may hide or destroy it; a new one replaces it.
class PanelWindow {
 public:
  /// Creates a hidden window without a picture. Null without an X server that can show it.
  static std::unique_ptr<PanelWindow> create(const QString& role);

  ~PanelWindow();
  PanelWindow(const PanelWindow&) = delete;
  PanelWindow& operator=(const PanelWindow&) = delete;

  /// Returns whether another program has destroyed it, from events that have arrived. Does not
  /// wait.
  [[nodiscard]] bool isLost();
  /// Returns whether the window is translucent with a compositor.
  [[nodiscard]] bool canBeTranslucent() const;

  // Setting an unchanged value costs nothing.

  void setName(const QString& name);
  void setGeometry(const QRect& geometry);

  /// Sets the picture, of the window's size, premultiplied.
  void setPicture(const QImage& picture);
  /// Draws over a part of the window, until it is next redrawn from its picture.
  void paint(const QImage& part, const QPoint& corner);
  /// The size of the picture; 0 before there is one.
  [[nodiscard]] std::int64_t bytes() const { return bytes_; }

  /// Cuts the window to the region; an empty region removes the shape.
  void setShape(const QRegion& shape);

  /// Declares the width of the shadow inside the picture's edges, for programs that look for the
  /// panel or would add a shadow.
  void setShadow(int extent);

  /// Sets the opacity for the compositor, from 0 to 1.
  void setOpacity(double opacity);
  /// Makes the server set each of the opacities in turn, the first one an interval from now.
  /// Returns false if it cannot.
  bool playOpacities(std::chrono::milliseconds interval, std::span<const double> opacities);
  /// Stops playing. The opacity is then unknown until it is set.
  void stopOpacities();
  /// Shows the window in front of all others.
  void show(double opacity);
  void raise();
  void hide();

 private:
  explicit PanelWindow(std::shared_ptr<PanelConnection> connection, const QString& role);
  void sendOpacity(double opacity);
  void putInFront() const;

  std::shared_ptr<PanelConnection> connection_;
  std::uint32_t id_;
  QString name_;
  QRect geometry_;
  /// -1 while unknown.
  double opacity_ = -1;
  /// The player that has played since the window was shown: later opacities must go through it.
  std::shared_ptr<OpacityPlayer> player_;
  bool isPlaying_ = false;
  std::int64_t bytes_ = 0;
};

}  // namespace vembrix
