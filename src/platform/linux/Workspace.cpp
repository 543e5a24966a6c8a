#include "platform/Workspace.h"

#include <QProcess>
#include <QString>
#include <QUrl>

namespace vembrix {
namespace {

class XdgWorkspace : public Workspace {
 public:
  void openURL(std::string_view url) override {
    const QUrl address = QUrl::fromEncoded(
        QByteArray(url.data(), static_cast<qsizetype>(url.size())), QUrl::StrictMode);
    // Without a scheme, the program that opens it could take it for an option.
    if (!address.isValid() || address.scheme().isEmpty()) return;
    QProcess opener;
    opener.setProgram(QStringLiteral("xdg-open"));
    opener.setArguments({QString::fromLatin1(address.toEncoded())});
    // Output of the user's programs does not belong in this program's log.
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    opener.startDetached();
  }
};

}  // namespace

Workspace& Workspace::shared() {
  static XdgWorkspace workspace;
  return workspace;
}

}  // namespace vembrix
