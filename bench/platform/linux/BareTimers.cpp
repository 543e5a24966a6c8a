// What the two timers of a program at rest cost with Qt alone, for script/idle to
// compare with: they fire as Vembrix's do, and nothing else happens.

#include <QApplication>
#include <QTimer>
#include <chrono>

int main(int argc, char** argv) {
  using std::chrono::milliseconds;
  const QApplication application(argc, argv);
  int fired = 0;
  const auto start = [&fired](QTimer& timer, milliseconds interval) {
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&fired] { fired += 1; });
    timer.start(interval);
  };
  QTimer watching;
  start(watching, milliseconds(300));
  QTimer priming;
  // Begun apart, as a launch does, so that no beat of one ever falls on one of the other.
  QTimer launch;
  launch.setSingleShot(true);
  QObject::connect(&launch, &QTimer::timeout, [&] { start(priming, milliseconds(500)); });
  launch.start(milliseconds(25));
  return QApplication::exec();
}
