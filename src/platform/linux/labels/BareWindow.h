#pragma once

#include <QImage>
#include <QRectF>
#include <QString>
#include <cstdint>
#include <memory>

#include "platform/Geometry.h"
#include "platform/MainQueue.h"
#include "platform/WindowServer.h"
#include "platform/WindowTraits.h"
#include "platform/linux/labels/AlphaFade.h"
#include "platform/linux/labels/PanelContent.h"
#include "platform/linux/labels/PanelWindow.h"

namespace vembrix {

/// A borderless window above all others: a panel with round corners and a shadow. It lets clicks
/// through, is never key, and is unknown to window managers. It is mapped only while it is ordered
/// in, its Space is active and its alpha value is above 0; the X server's window is created at the
/// first mapping. Main thread.
///
/// With a compositor it is as translucent as its alpha value and content. Without one windows
/// cannot be translucent: the panel is opaque while its alpha value is above 0, so that a label is
/// readable during a fade and disappears at its end.
class BareWindow {
 public:
  struct Options {
    /// The panel's frame without its shadow, in points, global coordinates.
    Rect frame;
    WindowLevel level = WindowLevel::Floating;
    /// Bits of CollectionBehavior.
    std::uint64_t collectionBehavior = 0;
    double cornerRadius = 0;
    /// The value of WM_WINDOW_ROLE.
    QString role;
  };

  /// The content must outlive the panel.
  BareWindow(const Options& options, PanelContent& content);
  ~BareWindow();
  BareWindow(const BareWindow&) = delete;
  BareWindow& operator=(const BareWindow&) = delete;

  [[nodiscard]] WindowServer::WindowNumber number() const { return number_; }
  [[nodiscard]] WindowLevel level() const { return level_; }
  [[nodiscard]] const QString& role() const { return role_; }

  /// The window's name.
  void setName(const QString& name);
  [[nodiscard]] const QString& name() const { return name_; }

  [[nodiscard]] Rect frame() const { return frame_; }
  void setFrame(const Rect& frame);
  void setCollectionBehavior(std::uint64_t behavior);
  void orderFront();

  /// The alpha value, to be set and animated.
  [[nodiscard]] AlphaFade& alpha() { return alpha_; }
  [[nodiscard]] const AlphaFade& alpha() const { return alpha_; }

  /// Redraws before the panel is next seen: after the current event if it is visible.
  void update();
  /// Redraws a part of the window at once; in points from its top left corner.
  void update(const QRectF& part);

  /// Draws the window's contents, its shadow included, or a part of them, in points from its top
  /// left corner. `scale` is in pixels per point.
  [[nodiscard]] QImage picture(double scale, Backing backing, const QRectF& part) const;
  [[nodiscard]] QRectF bounds() const;

  // For PanelStage.

  /// Sets whether the active Space holds the panel, whatever its alpha value.
  void setOnScreen(bool isOnScreen);
  [[nodiscard]] bool isShown() const { return isShown_; }
  void raise();
  /// The size of the picture that the X server keeps.
  [[nodiscard]] std::int64_t pictureBytes() const { return window_ ? window_->bytes() : 0; }
  /// Destroys the window and its picture; the next showing creates them again.
  void dropWindow();

 private:
  void applyAlpha(double alpha);
  void show();
  void hide();
  void refresh();
  [[nodiscard]] Backing backing() const;

  PanelContent& content_;
  Rect frame_;
  WindowLevel level_;
  double cornerRadius_;
  QString role_;
  QString name_;
  WindowServer::WindowNumber number_;
  bool isOnScreen_ = false;
  bool isShown_ = false;

  std::unique_ptr<PanelWindow> window_;
  /// Whether the window's picture is up to date.
  bool isPainted_ = false;
  QSize paintedSize_;
  WorkItem refreshing_;
  AlphaFade alpha_;
};

}  // namespace vembrix
