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

/// A window without a border that floats above all others: a panel with round corners
/// and a shadow. It lets clicks through, is never key, and no window manager knows of
/// it. It is mapped only while it is ordered in, its Space is the active one and its
/// alpha value is above 0; before the first time it is no more than this object. Main
/// thread.
///
/// With a compositor it is as translucent as its alpha value and its content say.
/// Without one windows cannot be: then the panel is opaque as long as its alpha value
/// is not 0. So a label is read while it fades, and is gone at the end of that; to
/// leave it out altogether would take from users without a compositor what the program
/// is for, and to let it go earlier would gain nothing, since it hides what is below
/// from its first moment on.
class FloatingPanel {
 public:
  struct Options {
    /// Of the panel, without its shadow. Points, global coordinates.
    Rect frame;
    WindowLevel level = WindowLevel::Floating;
    /// Bits of CollectionBehavior.
    std::uint64_t collectionBehavior = 0;
    double cornerRadius = 0;
    /// WM_WINDOW_ROLE.
    QString role;
  };

  /// The content outlives the panel.
  FloatingPanel(const Options& options, PanelContent& content);
  ~FloatingPanel();
  FloatingPanel(const FloatingPanel&) = delete;
  FloatingPanel& operator=(const FloatingPanel&) = delete;

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

  /// Set and animated here.
  [[nodiscard]] AlphaFade& alpha() { return alpha_; }
  [[nodiscard]] const AlphaFade& alpha() const { return alpha_; }

  /// Draws anew before it is seen again: after the current event where it is seen now.
  void update();
  /// Draws a part of the window anew at once; in points from its top left corner.
  void update(const QRectF& part);

  /// What the window shows, its shadow included, or a part of that: in points from its
  /// top left corner. `scale`: pixels per point.
  [[nodiscard]] QImage picture(double scale, Backing backing, const QRectF& part) const;
  [[nodiscard]] QRectF bounds() const;

  // What the stage has to know and to say.

  /// Whether the active Space holds the panel; how faint it is there does not matter.
  void setOnScreen(bool isOnScreen);
  [[nodiscard]] bool isShown() const { return isShown_; }
  void raise();
  /// Of the picture that the X server keeps.
  [[nodiscard]] std::int64_t pictureBytes() const { return window_ ? window_->bytes() : 0; }
  /// Gives the window and its picture back; the next showing makes them anew.
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
  /// Whether the window's picture is that of now.
  bool isPainted_ = false;
  QSize paintedSize_;
  WorkItem refreshing_;
  AlphaFade alpha_;
};

}  // namespace vembrix
