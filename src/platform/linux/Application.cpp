#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <csignal>
#include <string>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/SystemLog.h"
#include "platform/linux/AppearanceObserver.h"
#include "platform/linux/LinuxApplication.h"
#include "platform/linux/LoopEvents.h"
#include "platform/linux/defaults/LinuxUserDefaults.h"
#include "platform/linux/session/ChosenDesktop.h"
#include "platform/linux/session/QtMessages.h"
#include "platform/linux/session/SingleInstance.h"
#include "platform/linux/session/SleepWatcher.h"
#include "platform/linux/session/TerminationSignals.h"
#include "platform/linux/support/FreedMemory.h"
#include "platform/linux/x11/ForgedEvents.h"
#include "platform/linux/x11/WindowHints.h"
#include "platform/linux/x11/X11Desktop.h"

namespace vembrix {
namespace {

/// The arguments for Qt. They must live as long as its application. The user's own arguments are
/// handled by the product, not by Qt.
struct QtArguments {
  explicit QtArguments(const char* platform) {
    if (platform) words.insert(words.end(), {"-platform", platform});
    for (std::string& word : words) pointers.push_back(word.data());
    count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
  }

  // The instance name becomes part of WM_CLASS. The faces draw themselves in a fixed style, so the
  // user's choice of a Qt style must not apply.
  std::vector<std::string> words = {"vembrix", "-name", "vembrix", "-style", "fusion"};
  std::vector<char*> pointers;
  int count = 0;
};

QtArguments& qtArguments() {
  static auto& arguments = *new QtArguments(chosenDesktop().qtPlatform);
  return arguments;
}

}  // namespace

/// Qt's application. Receives the events that Qt sends only to it.
class LinuxApplication::QtObject : public QApplication {
 public:
  explicit QtObject(QtArguments& arguments)
      : QApplication(arguments.count, arguments.pointers.data()) {
    setApplicationName(QStringLiteral("Vembrix"));
    setQuitOnLastWindowClosed(false);
  }

  void setDelegate(ApplicationDelegate* delegate) { delegate_ = delegate; }
  void setAppearance(AppearanceObserver& appearance) { appearance_ = &appearance; }

  void reopen() {
    if (delegate_) delegate_->applicationDidReopen();
  }

  /// Calls the delegate before the loop handles any other event.
  void launchSoon() { postEvent(this, new QEvent(kLaunch), Qt::HighEventPriority); }

  bool notify(QObject* receiver, QEvent* event) override {
    // Qt's own threads deliver events here, too.
    if (receiver->thread() == thread()) noteLoopEvent(receiver);
    // Qt would close its popups. It learns up to 0.4 s late that another program has the focus, so
    // a menu opened meanwhile would close at once.
    const bool isDeactivation = receiver == this && event->type() == QEvent::ApplicationDeactivate;
    if (!isDeactivation) return QApplication::notify(receiver, event);
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): it is QApplication's part that is left out.
    return QGuiApplication::notify(receiver, event);
  }

  bool event(QEvent* event) override {
    if (event->type() == kLaunch) {
      if (delegate_) delegate_->applicationDidFinishLaunching();
      return true;
    }
    const bool handled = QApplication::event(event);
    if (event->type() == QEvent::ApplicationPaletteChange && appearance_) appearance_->update();
    return handled;
  }

 private:
  static constexpr QEvent::Type kLaunch = QEvent::User;

  ApplicationDelegate* delegate_ = nullptr;
  AppearanceObserver* appearance_ = nullptr;
};

LinuxApplication& LinuxApplication::shared() {
  // Never destroyed: windows and timers of the product may outlive main().
  static auto& application = *new LinuxApplication;
  return application;
}

Application& Application::shared() {
  return LinuxApplication::shared();
}

LinuxApplication::LinuxApplication() {
  returnFreedMemory();
  // Writing to a server that has ended then fails with an error instead of a signal.
  std::signal(SIGPIPE, SIG_IGN);
  handleQtMessages();
  qt_ = std::make_unique<QtObject>(qtArguments());
  forgedEventFilter_ = std::make_unique<ForgedEventFilter>();
  // The queue belongs to the thread that creates it.
  MainQueue::main();
  if (X11Desktop* x11 = chosenDesktop().x11) x11->follow();
  appearance_ = std::make_unique<AppearanceObserver>();
  qt_->setAppearance(*appearance_);
  sleepWatcher_ = std::make_unique<SleepWatcher>();
  terminationSignals_ = std::make_unique<TerminationSignals>([this] { terminate(); });
}

LinuxApplication::~LinuxApplication() = default;

void LinuxApplication::setDelegate(ApplicationDelegate* delegate) {
  qt_->setDelegate(delegate);
}

int LinuxApplication::run() {
  requireDesktop();
  instance_.reset();
  instance_ = std::make_unique<SingleInstance>([this] { qt_->reopen(); });
  if (!instance_->isFirst()) {
    logLine("runs on this display already: its dropdown opens");
    return 0;
  }
  qt_->launchSoon();
  const int status = QApplication::exec();
  LinuxUserDefaults::shared().finish();
  return status;
}

void LinuxApplication::terminate() {
  QCoreApplication::exit(0);
}

void LinuxApplication::activate() {
  // There is at most one: all other windows of the program refuse the keyboard.
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const bool isOrdinary = window->windowType() == Qt::Window;
    if (!isOrdinary || !window->isVisible()) continue;
    if (window->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus)) continue;
    bringToFront(*window->windowHandle());
  }
}

std::optional<Appearance> LinuxApplication::effectiveAppearance() const {
  return appearance_->value();
}

bool LinuxApplication::reducesMotion() const {
  return appearance_->reducesMotion();
}

}  // namespace vembrix
