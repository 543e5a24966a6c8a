#include "platform/PreviewCanvas.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QScreen>
#include <cmath>
#include <memory>

#include "platform/Application.h"
#include "platform/linux/Conversions.h"
#include "platform/linux/menubar/NativeSpaceRowView.h"
#include "platform/linux/menubar/VembrixSpaceRowView.h"
#include "platform/linux/ui/SettingsContentView.h"

namespace vembrix {
namespace {

/// The distance between the edge of a label and its text, as in labels of macOS.
constexpr double kLabelInset = 2;
/// The distance from the top of a label to its baseline, for every font.
constexpr double kLabelBaseline = 13;

QSize rounded(const Size& size) {
  return {static_cast<int>(std::lround(size.width)), static_cast<int>(std::lround(size.height))};
}

/// Returns a transparent picture in the pixels of the main screen.
QImage makePicture(const QSize& size) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  const double scale = screen ? screen->devicePixelRatio() : 1;
  QImage picture(size * scale, QImage::Format_ARGB32_Premultiplied);
  picture.setDevicePixelRatio(scale);
  picture.fill(Qt::transparent);
  return picture;
}

std::optional<std::string> encoded(const QImage& picture) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QImageWriter writer(&buffer, "png");
  if (picture.isNull() || !writer.write(picture)) return std::nullopt;
  return bytes.toStdString();
}

/// Draws the parts of a mock; its coordinates count down from the top.
class MenuMockPainter {
 public:
  MenuMockPainter(QPainter& painter, const MenuMock& mock) : painter_(painter), mock_(mock) {}

  void paint() {
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(native(mock_.background));
    painter_.drawRoundedRect(QRectF(QPointF(), QSizeF(rounded(mock_.size))), mock_.cornerRadius,
                             mock_.cornerRadius);
    for (const MenuMock::Row& row : mock_.rows) paint(row);
    for (const MenuMock::Separator& separator : mock_.separators) {
      painter_.fillRect(flipped(separator.frame), native(separator.color));
    }
    for (const MenuMock::Label& label : mock_.labels) paint(label);
  }

 private:
  [[nodiscard]] QColor native(const Srgb& color) const {
    return nativeColor(color, mock_.appearance);
  }

  [[nodiscard]] QRectF flipped(const Rect& frame) const {
    return {frame.x, mock_.size.height - frame.y - frame.height, frame.width, frame.height};
  }

  void paint(const MenuMock::Row& row) {
    // Every row comes from SpaceRowView::create().
    auto& native = static_cast<NativeSpaceRowView&>(*row.view);
    const std::unique_ptr<VembrixSpaceRowView> widget(native.makeWidget());
    const QRect frame = flipped(row.frame).toRect();
    widget->setAppearance(mock_.appearance);
    widget->resize(frame.size());
    widget->render(&painter_, frame.topLeft(), {}, QWidget::DrawChildren);
  }

  void paint(const MenuMock::Label& label) {
    painter_.setFont(nativeFont(label.font));
    painter_.setPen(native(label.color));
    painter_.drawText(flipped(label.frame).topLeft() + QPointF(kLabelInset, kLabelBaseline),
                      QString::fromStdString(label.text));
  }

  QPainter& painter_;
  const MenuMock& mock_;
};

class QtPreviewCanvas : public PreviewCanvas {
 public:
  std::optional<std::string> draw(SettingsContent content) override {
    const QSize size = rounded(content.size());
    SettingsContentView view(content, 0, {}, nullptr);
    view.setSystemAppearance(systemAppearance());
    view.resize(size);
    QImage picture = makePicture(size);
    view.render(&picture);
    return encoded(picture);
  }

  std::optional<std::string> draw(MenuMock mock) override {
    QImage picture = makePicture(rounded(mock.size));
    {
      QPainter painter(&picture);
      MenuMockPainter(painter, mock).paint();
    }
    return encoded(picture);
  }
};

}  // namespace

PreviewCanvas& PreviewCanvas::shared() {
  // Qt's drawing needs an application.
  Application::shared();
  static QtPreviewCanvas canvas;
  return canvas;
}

}  // namespace vembrix
