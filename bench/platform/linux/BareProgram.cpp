// The cheapest Qt program that shows the current desktop: a dock window with its number.
// script/footprint compares Vembrix with it. With --polls it also requests the list of windows
// every 0.3 s and every 0.5 s.

#include <xcb/xcb.h>
#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

/// The numeric properties of the root window; each reading waits for the server.
class Root {
 public:
  explicit Root(xcb_connection_t* connection) : connection_(connection) {
    window_ = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    currentDesktop_ = atom("_NET_CURRENT_DESKTOP");
    clients_ = atom("_NET_CLIENT_LIST_STACKING");
  }

  [[nodiscard]] bool isCurrentDesktop(xcb_atom_t atom) const { return atom == currentDesktop_; }
  [[nodiscard]] std::uint32_t currentDesktop() const { return first(currentDesktop_); }
  void lookAtClients() const { first(clients_); }

 private:
  [[nodiscard]] xcb_atom_t atom(std::string_view name) const {
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_NONE};
  }

  std::uint32_t first(xcb_atom_t property) const {
    const auto cookie =
        xcb_get_property(connection_, 0, window_, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1024);
    const std::unique_ptr<xcb_get_property_reply_t, Free> reply(
        xcb_get_property_reply(connection_, cookie, nullptr));
    std::uint32_t value = 0;
    if (reply && xcb_get_property_value_length(reply.get()) >= static_cast<int>(sizeof(value))) {
      std::memcpy(&value, xcb_get_property_value(reply.get()), sizeof(value));
    }
    return value;
  }

  xcb_connection_t* connection_;
  xcb_window_t window_{};
  xcb_atom_t currentDesktop_{};
  xcb_atom_t clients_{};
};

class Strip : public QWidget, public QAbstractNativeEventFilter {
 public:
  explicit Strip(const Root& root) : root_(root) {
    setAttribute(Qt::WA_X11NetWmWindowTypeDock);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    setGeometry(screen.right() - kWidth + 1, screen.top(), kWidth, kHeight);
    follow();
  }

  bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY) return false;
    const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event);
    if (root_.isCurrentDesktop(change->atom)) follow();
    return false;
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0xB0, 0xD4, 0xFF));
    painter.drawText(rect(), Qt::AlignCenter, windowTitle());
  }

 private:
  static constexpr int kWidth = 120;
  static constexpr int kHeight = 24;

  void follow() {
    setWindowTitle(QStringLiteral("Desktop %1").arg(root_.currentDesktop() + 1));
    update();
  }

  const Root& root_;
};

}  // namespace

int main(int argc, char** argv) {
  using std::chrono::milliseconds;
  QApplication application(argc, argv);
  auto* x11 = application.nativeInterface<QNativeInterface::QX11Application>();
  if (!x11) return 1;
  const Root root(x11->connection());
  Strip strip(root);
  application.installNativeEventFilter(&strip);
  strip.show();

  const bool polls = argc > 1 && std::string_view(argv[1]) == "--polls";
  QTimer watching;
  QTimer priming;
  for (QTimer* timer : {&watching, &priming}) {
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, [&root] { root.lookAtClients(); });
  }
  QTimer launch;
  launch.setSingleShot(true);
  QObject::connect(&launch, &QTimer::timeout, [&priming] { priming.start(milliseconds(500)); });
  if (polls) {
    watching.start(milliseconds(300));
    // Started at different times, as in a launch, so that the two timers never fire together.
    launch.start(milliseconds(25));
  }
  return QApplication::exec();
}
