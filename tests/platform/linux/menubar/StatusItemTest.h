#pragma once

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPalette>
#include <QWidget>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>

#include "platform/Application.h"
#include "platform/StatusItem.h"
#include "platform/linux/menubar/NativeDropdownMenu.h"
#include "platform/linux/support/TestSession.h"

namespace vembrix {

inline constexpr Srgb kPink{1.0, 0.71, 0.76};
inline constexpr QRgb kLightBar = qRgb(246, 246, 246);
inline constexpr QRgb kDarkBar = qRgb(40, 40, 42);

inline int distance(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b))});
}

inline QRgb rgbOf(const Srgb& color) {
  return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                          static_cast<float>(color.blue))
      .rgb();
}

/// Returns how many pixels have that colour, within a tolerance that the eye does not see.
inline int count(const QImage& image, QRgb color, int tolerance = 2) {
  int found = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (distance(image.pixel(x, y), color) <= tolerance) found += 1;
    }
  }
  return found;
}

inline StatusItemContent filled(const std::string& title, const Srgb& fill = kPink) {
  StatusItemContent content;
  content.label = StatusItemContent::AttributedTitle{title, kBlack};
  content.fill = fill;
  content.cornerRadius = 3;
  return content;
}

inline StatusItemContent plain(const std::string& title) {
  StatusItemContent content;
  content.label = StatusItemContent::PlainTitle{title};
  return content;
}

inline StatusItemContent fixed(StatusItemContent content) {
  content.length = StatusItemLength::fixed(140);
  return content;
}

/// An icon: one black square at the lower edge, half as wide as the image.
inline StatusItemContent icon() {
  StatusItemContent content;
  content.label = TemplateImage{{16, 16}, {{{0, 0, 8, 8}, 0}}};
  content.length = StatusItemLength::square();
  return content;
}

/// A status item that no window manager sees.
class StatusItemTest : public testing::Test {
 protected:
  StatusItemTest() {
    TestSession::useNoScreen();
    item_ = StatusItem::create();
  }

  static QWidget* windowOfRole(const QString& role) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->windowRole() == role) return widget;
    }
    return nullptr;
  }

  QWidget& strip() { return *windowOfRole("status-item"); }

  QImage show(const StatusItemContent& content) {
    item_->setContent(content);
    return picture();
  }
  QImage picture() { return strip().grab().toImage(); }

  QAbstractButton& button() { return *strip().findChild<QAbstractButton*>(); }

  void mouse(QEvent::Type type, const QPoint& place) {
    const Qt::MouseButton changed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const bool isReleased = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, place, button().mapToGlobal(place), changed,
                      isReleased ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&button(), &event);
  }
  /// Drags the item; each move is relative to where the item is by then.
  void drag(const QPoint& by) {
    const QPoint start = strip().pos();
    mouse(QEvent::MouseButtonPress, {5, 5});
    for (const QPoint& step : {by / 2, by})
      mouse(QEvent::MouseMove, start + step + QPoint(5, 5) - strip().pos());
    mouse(QEvent::MouseButtonRelease, {5, 5});
  }
  void click(const QPoint& trembling = {}) {
    mouse(QEvent::MouseButtonPress, {5, 5});
    mouse(QEvent::MouseMove, QPoint(5, 5) + trembling);
    mouse(QEvent::MouseButtonRelease, QPoint(5, 5) + trembling);
  }

  static void useDarkWidgets() {
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, QColor(30, 30, 30));
    palette.setColor(QPalette::WindowText, QColor(230, 230, 230));
    QApplication::setPalette(palette);
    ASSERT_TRUE(
        runUntil([] { return Application::shared().effectiveAppearance() == Appearance::Dark; }));
  }

  TestSession session_;
  std::unique_ptr<StatusItem> item_;
};

}  // namespace vembrix
