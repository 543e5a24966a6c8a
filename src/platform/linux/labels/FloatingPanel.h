#pragma once

#include <QRegion>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/Geometry.h"
#include "platform/MainQueue.h"
#include "platform/WindowServer.h"
#include "platform/WindowTraits.h"
#include "platform/linux/labels/AlphaFade.h"
#include "platform/linux/labels/PanelContent.h"
#include "platform/linux/labels/PanelPlacement.h"

namespace vembrix {

/// A window without a border that floats above those of programs: a panel with round
/// corners and a shadow. It lets clicks through, is never key, and is in no list that
/// a user sees. Out of sight until orderFront(). Main thread.
///
/// With a compositor it is as translucent as its alpha value and its content say.
/// Without one windows cannot be: then the panel is opaque as long as its alpha value
/// is not 0. So a label is read while it fades, and is gone at the end of that; to
/// leave it out altogether would take from users without a compositor what the program
/// is for, and to let it go earlier would gain nothing, since it hides what is below
/// from its first moment on.
class FloatingPanel : public QWidget {
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
  ~FloatingPanel() override;

  [[nodiscard]] WindowServer::WindowNumber number() const { return placement_->number(); }

  /// The window's name. What it is already costs nothing.
  void setName(const QString& name);

  [[nodiscard]] Rect frame() const { return frame_; }
  void setFrame(const Rect& frame);
  void setCollectionBehavior(std::uint64_t behavior);
  void orderFront();

  /// Set and animated here.
  [[nodiscard]] AlphaFade& alpha() { return alpha_; }
  [[nodiscard]] const AlphaFade& alpha() const { return alpha_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// What there is of the window: all of it, the panel without its shadow, nothing.
  enum class Shape { Whole, Panel, Nothing };

  [[nodiscard]] QRectF panelRect() const;
  [[nodiscard]] Shape shape() const;
  void applyAlpha(double alpha);
  void updateShape();
  void setShown(bool shown);
  void raiseInLevel();

  PanelContent& content_;
  Rect frame_;
  WindowLevel level_;
  double cornerRadius_;
  Shape shape_ = Shape::Whole;
  std::unique_ptr<PanelPlacement> placement_;
  AlphaFade alpha_;
};

}  // namespace vembrix
