#include "platform/Pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QString>
#include <memory>

#include "platform/Application.h"

namespace vembrix {
namespace {

class QtPasteboard : public Pasteboard {
 public:
  QtPasteboard() {
    // The clipboard is that of Qt's application.
    Application::shared();
  }

  void clearContents() override { clipboard().clear(); }

  void setString(std::string_view text) override {
    auto contents = std::make_unique<QMimeData>();
    // A clipboard is set as a whole: what is to stay goes along.
    if (const QMimeData* present = clipboard().mimeData()) {
      for (const QString& format : present->formats()) {
        if (!format.startsWith(QLatin1String("text/plain"))) {
          contents->setData(format, present->data(format));
        }
      }
    }
    contents->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    clipboard().setMimeData(contents.release());
  }

 private:
  static QClipboard& clipboard() { return *QGuiApplication::clipboard(); }
};

}  // namespace

Pasteboard& Pasteboard::general() {
  static QtPasteboard pasteboard;
  return pasteboard;
}

}  // namespace vembrix
