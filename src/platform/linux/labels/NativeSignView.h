#pragma once

#include <QFont>
#include <QString>

#include "platform/SignWindow.h"
#include "platform/linux/labels/PanelContent.h"

namespace vembrix {

class BareWindow;

/// The view of a label: draws its panel and text. Main thread.
class NativeSignView : public SignView, public PanelContent {
 public:
  /// Both are in points.
  NativeSignView(double cornerRadius, double padding);

  /// Sets the panel that shows the view, for this object's life.
  void setPanel(BareWindow& panel) { panel_ = &panel; }

  void setText(std::string_view text) override;
  void setFont(const Font& font) override;
  void setLook(const SignLook& look) override;
  void setNeedsDisplay() override;

  void paint(QPainter& painter, const QRectF& panel, Backing backing) override;

 private:
  void paintText(QPainter& painter, const QRectF& panel) const;

  double cornerRadius_;
  double padding_;
  BareWindow* panel_ = nullptr;
  std::string text_;
  QString line_;
  Font font_;
  QFont nativeFont_;
  SignLook look_;
};

}  // namespace vembrix
