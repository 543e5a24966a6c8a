#include "platform/linux/menubar/MenuStyle.h"

#include <QAction>
#include <QFontMetrics>
#include <QFontMetricsF>
#include <QKeySequence>
#include <QMenu>
#include <QPaintDevice>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOptionMenuItem>
#include <algorithm>

#include "platform/linux/TextMetrics.h"
#include "platform/linux/menubar/MenuPainting.h"
#include "platform/linux/support/PixelGrid.h"

namespace vembrix {
namespace {

/// The distance from the edge of the menu to titles and key equivalents.
constexpr int kTitleInset = 14;
constexpr int kShortcutGap = 24;
/// The text that determines the width of key equivalents.
constexpr QLatin1String kWideKey("Ctrl+W");
constexpr int kSeparatorHeight = 11;

const QAction* actionOf(const QStyleOptionMenuItem& item, const QWidget* widget) {
  const auto* menu = qobject_cast<const QMenu*>(widget);
  return menu ? menu->actionAt(item.rect.center()) : nullptr;
}

/// Returns the key equivalent. Passed to the painting only, since Qt would reserve its width beside
/// rows, too, which have none.
QString shortcutOf(const QAction* action) {
  return action ? action->shortcut().toString(QKeySequence::NativeText) : QString();
}

bool isSeparator(const QStyleOptionMenuItem& item) {
  return item.menuItemType == QStyleOptionMenuItem::Separator;
}

/// Returns a faint colour on the menu.
QColor faint(QColor ink, float share) {
  ink.setAlphaF(ink.alphaF() * share);
  return ink;
}

void drawSeparator(const QStyleOptionMenuItem& item, QPainter& painter) {
  const QRectF rect = item.rect;
  const QRectF line(rect.x() + kTitleInset - kMenuHighlightInset, rect.center().y() - 0.5,
                    rect.width() - 2 * (kTitleInset - kMenuHighlightInset), 1);
  QRectF pixels = onPixels(painter, line);
  pixels.setHeight(pointLine(painter));
  painter.fillRect(pixels, faint(item.palette.color(QPalette::WindowText), 0.14F));
}

void drawItem(const QStyleOptionMenuItem& item, const QAction* action, QPainter& painter) {
  const QString shortcut = shortcutOf(action);
  const QColor tint = action ? action->data().value<QColor>() : QColor();
  const bool isSelected =
      item.state.testFlag(QStyle::State_Selected) && item.state.testFlag(QStyle::State_Enabled);
  if (isSelected) {
    paintMenuHighlight(painter, item.rect, kMenuHighlightInset,
                       tint.isValid() ? tint : item.palette.color(QPalette::Highlight));
  }
  const bool isInverted = isSelected && !tint.isValid();
  const QColor ink =
      item.palette.color(isInverted ? QPalette::HighlightedText : QPalette::WindowText);
  const QFontMetricsF metrics(item.font);
  const double baseline =
      middleBaseline(item.font, item.rect.height(), painter.device()->devicePixelRatio());
  const QRectF rect(item.rect.x() + kTitleInset, item.rect.y() + baseline - metrics.ascent(),
                    item.rect.width() - 2 * kTitleInset, metrics.height());
  constexpr int kOneLine = Qt::AlignTop | Qt::TextSingleLine | Qt::TextHideMnemonic;
  painter.setFont(item.font);
  painter.setPen(ink);
  painter.drawText(rect, kOneLine | Qt::AlignLeft, item.text);
  painter.setPen(isSelected ? ink : item.palette.color(QPalette::PlaceholderText));
  painter.drawText(rect, kOneLine | Qt::AlignRight, shortcut);
}

}  // namespace

MenuStyle::MenuStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (element == CE_MenuItem && item) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (isSeparator(*item)) {
      drawSeparator(*item, *painter);
    } else {
      drawItem(*item, actionOf(*item, widget), *painter);
    }
    painter->restore();
    return;
  }
  // The panel is drawn as a whole, so its empty parts need no drawing.
  if (element == CE_MenuEmptyArea || element == CE_MenuHMargin || element == CE_MenuVMargin) return;
  QProxyStyle::drawControl(element, option, painter, widget);
}

void MenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
  if (element == PE_FrameMenu) return;
  if (element != PE_PanelMenu) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  paintMenuPanel(*painter, option->rect, option->palette);
}

QSize MenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (type != CT_MenuItem || !item) {
    return QProxyStyle::sizeFromContents(type, option, size, widget);
  }
  if (isSeparator(*item)) return {1, kSeparatorHeight};
  const QFontMetrics metrics(item->font);
  const int title = metrics.size(Qt::TextHideMnemonic, item->text).width();
  const int width = 2 * kTitleInset + title + kShortcutGap + metrics.horizontalAdvance(kWideKey);
  return {width, std::max(kMenuRowHeight, lineHeight(item->font))};
}

int MenuStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
  switch (metric) {
    case PM_MenuPanelWidth:
    case PM_MenuHMargin:
      return 0;
    case PM_MenuVMargin:
      return kMenuPadding;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* result) const {
  switch (hint) {
    case SH_Menu_MouseTracking:
    case SH_Menu_Scrollable:
    case SH_Menu_SelectionWrap:
      return 1;
    // The panel's painting rounds the corners; DropdownWidget sets a mask if that is not enough.
    case SH_Menu_Mask:
    case SH_EtchDisabledText:
    case SH_UnderlineShortcut:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, result);
  }
}

}  // namespace vembrix
