#include "platform/SettingsWindow.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/NotificationCenter.h"
#include "platform/linux/LinuxApplication.h"
#include "platform/linux/ui/SettingsContentView.h"
#include "platform/linux/x11/WindowHints.h"

namespace vembrix {
namespace {

/// Identifies the focused control, to find it again in other content.
struct FocusedControl {
  QByteArray kind;
  QString name;
};

std::optional<FocusedControl> focusedControlIn(const QWidget* area) {
  const QWidget* control = area ? area->window()->focusWidget() : nullptr;
  if (!control || control == area || !area->isAncestorOf(control)) return std::nullopt;
  return FocusedControl{control->metaObject()->className(), control->accessibleName()};
}

void focusSame(const FocusedControl& wanted, const QWidget& area) {
  for (QWidget* control : area.findChildren<QWidget*>()) {
    const bool isSame = control->metaObject()->className() == wanted.kind &&
                        control->accessibleName() == wanted.name;
    if (!isSame || control->focusPolicy() == Qt::NoFocus) continue;
    control->setFocus(Qt::OtherFocusReason);
    return;
  }
}

/// The window's frame. Closes on the closing keys if no control takes them; an open menu or dialog
/// receives its own keys.
class Frame : public QWidget {
 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close)) {
      close();
    } else {
      QWidget::keyPressEvent(event);
    }
  }
};

class QtSettingsWindow : public SettingsWindow {
 public:
  QtSettingsWindow(Size contentSize, std::string_view title) {
    window_.setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    window_.setWindowRole(QStringLiteral("settings"));
    window_.setWindowTitle(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
    contentSize_ = {static_cast<int>(std::lround(contentSize.width)),
                    static_cast<int>(std::lround(contentSize.height))};
    fitToScreen();
  }

  void setTabClickHandler(std::function<void(int)> handler) override {
    tabClicked_ = std::move(handler);
  }

  void setContent(SettingsContent content) override {
    const auto focused = focusedControlIn(view_);
    SettingsContentView* before = view_;
    const auto tabClicked = [this](int index) {
      // A copy, because the handler may be replaced while it runs.
      if (const auto handler = tabClicked_) handler(index);
    };
    // The window manager draws the title bar, and content cannot extend below it.
    view_ = new SettingsContentView(content, kTitleBarHeight, tabClicked, &window_);
    applyAppearance();
    view_->setGeometry(window_.rect());
    view_->show();
    view_->setFocus();
    if (focused) focusSame(*focused, *view_);
    if (before) retire(*before);
  }

  void setPage(ThemedPage page) override {
    if (view_) view_->setPage(page);
  }
  void setStatus(const ControlID& id, std::string_view text) override {
    if (view_) view_->setStatus(id, text);
  }
  void setEnabled(const ControlID& id, bool isEnabled) override {
    if (view_) view_->setEnabled(id, isEnabled);
  }

  void show() override {
    // Creates the native window, so that its hints are set before it is shown.
    window_.winId();
    if (!window_.isVisible()) makeDialog(*window_.windowHandle());
    const auto policy = LinuxApplication::shared().activationPolicy();
    if (policy == Application::ActivationPolicy::Accessory && !window_.isVisible()) {
      hideFromTaskLists(*window_.windowHandle());
    }
    if (!window_.isVisible()) fitToScreen();
    // For a window that Qt considers active, it would request the focus as well. A window manager
    // that has the window on another desktop would then let it flash.
    if (window_.isMinimized()) window_.setWindowState(Qt::WindowNoState);
    window_.show();
    bringToFront(*window_.windowHandle());
  }

 private:
  /// Deletes former content after the current events, because the closure of one of its controls
  /// may have replaced it.
  static void retire(SettingsContentView& view) {
    view.hide();
    view.setParent(nullptr);
    view.deleteLater();
  }

  void applyAppearance() {
    if (view_) view_->setSystemAppearance(systemAppearance());
  }

  /// Centres the window on the screen. It is no larger than the free part minus a title bar: the
  /// pages scroll.
  void fitToScreen() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int title = static_cast<int>(kTitleBarHeight);
    const QRect free = screen ? screen->availableGeometry().adjusted(0, title, 0, 0) : QRect();
    const QSize fitting = screen ? contentSize_.boundedTo(free.size()) : contentSize_;
    // Otherwise it stays where the user has moved it.
    if (view_ && fitting == window_.size()) return;
    window_.setFixedSize(fitting);
    if (view_) view_->setGeometry(window_.rect());
    QRect place(QPoint(), window_.size());
    place.moveCenter(screen ? screen->availableGeometry().center() : QPoint());
    if (screen) window_.move(place.topLeft());
  }

  Frame window_;
  /// The size if the screen has room for it.
  QSize contentSize_;
  SettingsContentView* view_ = nullptr;
  std::function<void(int)> tabClicked_;
  Observation themeObservation_ = NotificationCenter::distributed().addObserver(
      notification::kInterfaceThemeChanged, [this] { applyAppearance(); });
};

}  // namespace

std::unique_ptr<SettingsWindow> SettingsWindow::create(Size contentSize, std::string_view title) {
  // Qt's windows need an application.
  Application::shared();
  return std::make_unique<QtSettingsWindow>(contentSize, title);
}

}  // namespace vembrix
