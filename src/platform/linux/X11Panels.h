#pragma once

#include <QRect>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/linux/PanelAreas.h"
#include "platform/linux/X11EventReader.h"

namespace vembrix {

/// The panels of other programs, and what the window manager leaves of the screen: a
/// model that the X server's events keep up to date. It never waits for an answer. Each
/// window is asked once what it is, when the list of windows or the work area has
/// changed; only panels are followed. Main thread; needs a Qt application.
class X11Panels {
 public:
  struct Handlers {
    /// A panel or the work area has changed, or is known for the first time.
    std::function<void()> changed;
    /// The order of the windows has changed; told after followStacking() only.
    std::function<void()> restacked;
    /// Whether a full-screen window is to cover the one that is left out; told after
    /// followFullScreen() only, at first and then when it changes.
    std::function<void(bool isFullScreen)> fullScreenChanged;
    /// Another window manager has come.
    std::function<void()> windowManagerChanged;
  };

  /// The reader must outlive it.
  X11Panels(X11EventReader& events, Handlers handlers);
  ~X11Panels();
  X11Panels(const X11Panels&) = delete;
  X11Panels& operator=(const X11Panels&) = delete;

  /// Whether everything has been answered once.
  [[nodiscard]] bool isKnown() const { return isKnown_; }
  [[nodiscard]] const std::vector<DockFacts>& docks() const { return docks_; }
  /// Of the first desktop; nothing where the window manager tells none.
  [[nodiscard]] const std::optional<QRect>& workArea() const { return workArea_; }

  /// The window is no panel of others.
  void leaveOut(xcb_window_t window);

  /// Asks for everything anew, for changes of which no window tells.
  void refresh();

  void followFullScreen(bool follow);

  void followStacking(bool follow);
  /// Whether a panel that overlaps `area` is above the window that is left out, as far
  /// as the window manager tells.
  [[nodiscard]] bool isBelowPanel(const QRect& area) const;

 private:
  struct Window {
    DockFacts facts;
    bool isDock = false;
    [[nodiscard]] bool isPanel() const { return isDock || facts.strut; }
    bool isFollowed = false;
    /// Numbers the lists of windows.
    std::uint32_t lastSeen = 0;
  };
  /// What has changed on the server since it was asked for.
  struct Stale {
    bool windows = false;
    bool workArea = false;
    bool stacking = false;
    bool fullScreen = false;
  };
  /// Takes the answer to a request in; null where the server refused.
  using Taker = std::function<void(const void* reply)>;
  struct Question {
    unsigned int sequence = 0;
    Taker take;
  };

  void note(const xcb_generic_event_t& event);
  void noteProperty(const xcb_property_notify_event_t& event);
  void finishBatch();
  /// Takes what answers are there; whether all are.
  bool takeAnswers();
  void askWhatIsStale();
  void askForWindows();
  void askForWorkArea();
  void askForStacking();
  void askForFullScreen();
  void askForState(xcb_window_t id);
  void listWindows(const xcb_window_t* windows, std::size_t count);
  void ask(xcb_window_t id);
  void askForType(xcb_window_t id);
  void askForStrut(xcb_window_t id, xcb_atom_t property, std::uint32_t length);
  void askForPlace(xcb_window_t id);
  void follow(xcb_window_t id, Window& window);
  /// Has it asked again, where it is followed.
  void unsettlePanel(xcb_window_t id);
  void forgetUnseen();
  void announce();

  template <typename Cookie>
  void expect(Cookie cookie, Taker take);
  Window* find(xcb_window_t id);

  Handlers handlers_;
  X11EventReader& events_;
  X11Connection& connection_;
  const xcb_ewmh_connection_t& atoms_;
  Token listening_;
  std::deque<Question> questions_;
  std::unordered_map<xcb_window_t, Window> windows_;
  std::uint32_t listNumber_ = 0;
  /// Not asked since they came or changed.
  std::vector<xcb_window_t> unsettled_;
  /// Something may be other than it was announced.
  bool isNews_ = false;
  Stale stale_{.windows = true, .workArea = true};
  xcb_window_t own_ = XCB_WINDOW_NONE;
  bool followsStacking_ = false;
  /// Bottom to top.
  std::vector<xcb_window_t> stacking_;
  bool isRestacked_ = false;
  bool followsFullScreen_ = false;
  xcb_window_t active_ = XCB_WINDOW_NONE;
  /// The last active one that was full-screen, for as long as it is and is shown.
  xcb_window_t fullScreen_ = XCB_WINDOW_NONE;
  std::optional<bool> announcedFullScreen_;

  bool isKnown_ = false;
  std::vector<DockFacts> docks_;
  std::optional<QRect> workArea_;
  std::optional<QRect> announcedWorkArea_;
};

}  // namespace vembrix
