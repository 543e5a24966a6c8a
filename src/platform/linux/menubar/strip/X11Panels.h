#pragma once

#include <QRect>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/linux/menubar/strip/PanelAreas.h"
#include "platform/linux/x11/X11EventReader.h"

namespace vembrix {

/// A model of other programs' panels and the window manager's work area, kept up to date by the X
/// server's events without waiting for answers. Each window is queried once, when the list of
/// windows or the work area has changed; only panels are followed. Main thread; needs a Qt
/// application.
class X11Panels {
 public:
  struct Handlers {
    /// A panel or the work area has changed, or is known for the first time.
    std::function<void()> changed;
    /// The order of the windows has changed; reported only after followStacking().
    std::function<void()> restacked;
    /// Reports whether a full-screen window is to cover the left-out window: first after
    /// followFullScreen(), then on each change.
    std::function<void(bool isFullScreen)> fullScreenChanged;
    /// Another window manager has started.
    std::function<void()> windowManagerChanged;
  };

  /// The reader must outlive it.
  X11Panels(X11EventReader& events, Handlers handlers);
  ~X11Panels();
  X11Panels(const X11Panels&) = delete;
  X11Panels& operator=(const X11Panels&) = delete;

  /// Returns whether all first queries have been answered.
  [[nodiscard]] bool isKnown() const { return isKnown_; }
  [[nodiscard]] const std::vector<DockFacts>& docks() const { return docks_; }
  /// The work area of the first desktop; empty if the window manager reports none.
  [[nodiscard]] const std::optional<QRect>& workArea() const { return workArea_; }

  /// Excludes the window, which is the program's own panel.
  void leaveOut(xcb_window_t window);

  /// Queries everything again, for changes that no event reports.
  void refresh();

  void followFullScreen(bool follow);

  void followStacking(bool follow);
  /// Returns whether a panel that overlaps `area` is above the left-out window, as far as the
  /// window manager reports it.
  [[nodiscard]] bool isBelowPanel(const QRect& area) const;

 private:
  struct Window {
    DockFacts facts;
    bool isDock = false;
    [[nodiscard]] bool isPanel() const { return isDock || facts.strut; }
    bool isFollowed = false;
    /// The number of the last list of windows that contains it.
    std::uint32_t lastSeen = 0;
  };
  /// Values that have changed on the server since they were queried.
  struct Stale {
    bool windows = false;
    bool workArea = false;
    bool stacking = false;
    bool fullScreen = false;
  };
  /// Takes the answer to a request; null if the server refused it.
  using Taker = std::function<void(const void* reply)>;
  struct Question {
    unsigned int sequence = 0;
    Taker take;
  };

  void note(const xcb_generic_event_t& event);
  void noteProperty(const xcb_property_notify_event_t& event);
  void finishBatch();
  /// Takes the answers that have arrived; returns whether none is missing.
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
  /// Has a followed panel queried again.
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
  /// Windows not queried since they appeared or changed.
  std::vector<xcb_window_t> unsettled_;
  /// Whether the model may differ from the announced state.
  bool isNews_ = false;
  Stale stale_{.windows = true, .workArea = true};
  xcb_window_t own_ = XCB_WINDOW_NONE;
  bool followsStacking_ = false;
  /// Bottom to top.
  std::vector<xcb_window_t> stacking_;
  bool isRestacked_ = false;
  bool followsFullScreen_ = false;
  xcb_window_t active_ = XCB_WINDOW_NONE;
  /// The full-screen window that was active last, while it is shown and full-screen.
  xcb_window_t fullScreen_ = XCB_WINDOW_NONE;
  std::optional<bool> announcedFullScreen_;

  bool isKnown_ = false;
  std::vector<DockFacts> docks_;
  std::optional<QRect> workArea_;
  std::optional<QRect> announcedWorkArea_;
};

}  // namespace vembrix
