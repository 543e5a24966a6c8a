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

#include "BenchSession.h"
#include "platform/SettingsWindow.h"
#include "settings/AppTheme.h"
#include "settings/PreferencesStore.h"
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

/// Adds Qt's own controls of a kind, one for each in the window.
template <typename Control, typename Make>
void addLike(const QWidget& window, QFormLayout& form, Make make) {
  for (const Control* control : window.findChildren<Control*>()) form.addRow(make(*control));
}

/// Creates a window of the same size with as many of Qt's own controls and the same texts.
std::unique_ptr<QWidget> bareWindow(const QWidget& window) {
  auto bare = std::make_unique<QWidget>();
  bare->setLayout(new QFormLayout);
  auto& form = static_cast<QFormLayout&>(*bare->layout());
  addLike<QLabel>(window, form, [](const QLabel& label) {
    auto* other = new QLabel(label.text());
    other->setWordWrap(label.wordWrap());
    return other;
  });
  addLike<QCheckBox>(window, form, [](const auto& box) { return new QCheckBox(box.text()); });
  addLike<QPushButton>(window, form, [](const auto& push) { return new QPushButton(push.text()); });
  addLike<QSlider>(window, form, [](const auto&) { return new QSlider(Qt::Horizontal); });
  addLike<QLineEdit>(window, form, [](const auto& field) { return new QLineEdit(field.text()); });
  addLike<QComboBox>(window, form, [](const QComboBox& popup) {
    auto* other = new QComboBox;
    for (int i = 0; i < popup.count(); ++i) other->addItem(popup.itemText(i));
    return other;
  });
  bare->setFixedSize(window.size());
  return bare;
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

/// The time from the request for the window with new content to its first paint; "ratio" is to a
/// bare window with as many of Qt's own controls and the same texts.
void openToFirstPaint(benchmark::State& state) {
  useBenchSession();
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
    const auto other = bareWindow(window);
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
