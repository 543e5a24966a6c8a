#include "platform/Pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QString>
#include <memory>

#include "platform/Application.h"
#include "platform/linux/x11/QtEwmh.h"
#include "platform/linux/x11/X11Connection.h"

namespace vembrix {
namespace {

class QtPasteboard : public Pasteboard {
 public:
  QtPasteboard() {
    // The clipboard belongs to Qt's application.
    Application::shared();
  }

  bool setString(std::string_view text) override {
    // Set in one step: a clipboard manager would refill a clipboard that is cleared first.
    auto contents = std::make_unique<QMimeData>();
    contents->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    clipboard().setMimeData(contents.release());
    return isOurs();
  }

 private:
  /// Returns whether this program owns the clipboard. Qt may say so although the server does not.
  static bool isOurs() {
    const xcb_ewmh_connection_t* ewmh = ewmhOfQt();
    // On Qt's other platforms the clipboard is within the process.
    if (!ewmh) return true;
    xcb_connection_t* xcb = ewmh->connection;
    constexpr std::string_view kName = "CLIPBOARD";
    const XcbPtr<xcb_intern_atom_reply_t> atom{
        xcb_intern_atom_reply(xcb, xcb_intern_atom(xcb, 1, kName.size(), kName.data()), nullptr)};
    if (!atom) return false;
    const XcbPtr<xcb_get_selection_owner_reply_t> owner{
        xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, atom->atom), nullptr)};
    if (!owner || owner->owner == XCB_WINDOW_NONE) return false;
    const xcb_setup_t* setup = xcb_get_setup(xcb);
    return (owner->owner & ~setup->resource_id_mask) == setup->resource_id_base;
  }

  static QClipboard& clipboard() { return *QGuiApplication::clipboard(); }
};

}  // namespace

Pasteboard& Pasteboard::general() {
  static QtPasteboard pasteboard;
  return pasteboard;
}

}  // namespace vembrix
