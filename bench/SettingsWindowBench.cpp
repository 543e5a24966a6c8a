#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <cstdlib>
#include <memory>

#include "platform/Application.h"
#include "platform/SettingsWindow.h"
#include "settings/PreferencesStore.h"
#include "ui/AppTheme.h"
#include "ui/PreferencesWindowController.h"

namespace vembrix {
namespace {

/// Waits until something is painted in a window that is being shown.
class FirstPaint : public QObject {
 public:
  explicit FirstPaint(QWidget& widget) { widget.installEventFilter(this); }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::Paint) isPainted_ = true;
    return QObject::eventFilter(object, event);
  }

  void wait() const {
    while (!isPainted_) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }

 private:
  bool isPainted_ = false;
};

template <typename Control>
int countIn(const QWidget& window) {
  return static_cast<int>(window.findChildren<Control*>().size());
}

/// How many controls of each kind a window has.
struct Controls {
  explicit Controls(const QWidget& window)
      : labels(countIn<QLabel>(window)),
        checkboxes(countIn<QCheckBox>(window)),
        popups(countIn<QComboBox>(window)),
        buttons(countIn<QPushButton>(window)),
        sliders(countIn<QSlider>(window)),
        fields(countIn<QLineEdit>(window)) {}

  int labels;
  int checkboxes;
  int popups;
  int buttons;
  int sliders;
  int fields;
};

std::unique_ptr<QWidget> bareWindow(const Controls& controls) {
  auto window = std::make_unique<QWidget>();
  auto* form = new QFormLayout(window.get());
  const QString text = QStringLiteral("Show desktop label");
  for (int i = 0; i < controls.labels; ++i) form->addRow(new QLabel(text));
  for (int i = 0; i < controls.checkboxes; ++i) form->addRow(new QCheckBox(text));
  for (int i = 0; i < controls.buttons; ++i) form->addRow(new QPushButton(text));
  for (int i = 0; i < controls.sliders; ++i) form->addRow(new QSlider(Qt::Horizontal));
  for (int i = 0; i < controls.fields; ++i) form->addRow(new QLineEdit(text));
  for (int i = 0; i < controls.popups; ++i) {
    auto* popup = new QComboBox;
    popup->addItems({text, text, text});
    form->addRow(popup);
  }
  window->setFixedSize(600, 520);
  return window;
}

QWidget& settingsWindow() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->windowRole() == QLatin1String("settings")) return *widget;
  }
  std::abort();
}

double seconds(const QElapsedTimer& timer) {
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/// From asking for the window with fresh content to its first paint; "ratio" is
/// to a bare window with as many of Qt's own controls.
void openToFirstPaint(benchmark::State& state) {
  Application::shared();
  const AppTheme& theme = AppTheme::all().at(static_cast<std::size_t>(state.range(0)));
  state.SetLabel(theme.name);
  PreferencesStore::shared().setThemeName(theme.name);
  auto& controller = PreferencesWindowController::shared();
  controller.showWindow();
  QWidget& window = settingsWindow();
  double ours = 0;
  double bare = 0;
  for ([[maybe_unused]] auto _ : state) {
    window.hide();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    const FirstPaint painted(window);
    QElapsedTimer timer;
    timer.start();
    controller.showWindow();
    painted.wait();
    ours += seconds(timer);
    state.SetIterationTime(seconds(timer));

    timer.start();
    const auto other = bareWindow(Controls(window));
    const FirstPaint otherPainted(*other);
    other->show();
    otherPainted.wait();
    bare += seconds(timer);
  }
  state.counters["ratio"] = ours / bare;
}
BENCHMARK(openToFirstPaint)->DenseRange(0, 6)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vembrix
