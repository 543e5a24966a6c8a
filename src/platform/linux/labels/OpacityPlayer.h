#pragma once

#include <xcb/sync.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>

namespace vembrix {

/// Makes the X server play a fade: all steps are sent together, on a separate connection, and the
/// server applies each when its time has come, so a fade wakes the program at most once. Plays one
/// fade at a time. Main thread.
class OpacityPlayer {
 public:
  /// Returns null if the server cannot wait or does not answer.
  static std::shared_ptr<OpacityPlayer> current();

  ~OpacityPlayer();
  OpacityPlayer(const OpacityPlayer&) = delete;
  OpacityPlayer& operator=(const OpacityPlayer&) = delete;

  [[nodiscard]] bool isPlaying() const { return isPlaying_; }

  /// Sets the 32-bit property of the window to each of the values in turn, the first one an
  /// interval from now.
  void play(xcb_window_t window, xcb_atom_t property, std::chrono::milliseconds interval,
            std::span<const std::uint32_t> values);
  /// Applies the remaining steps at once; does not wait. `other` is another connection.
  void stop(xcb_connection_t* other);
  /// Sets the property after all steps that were played.
  void set(xcb_window_t window, xcb_atom_t property, std::uint32_t value);

 private:
  OpacityPlayer() = default;
  bool open();
  void sendWait(std::chrono::milliseconds interval);
  void send(xcb_window_t window, xcb_atom_t property, std::uint32_t value);
  void dropEvents();

  xcb_connection_t* xcb_ = nullptr;
  /// The server's clock, in milliseconds.
  xcb_sync_counter_t clock_ = XCB_NONE;
  /// The number of the fade that was stopped last; raising it ends the server's waiting.
  xcb_sync_counter_t stopped_ = XCB_NONE;
  std::uint32_t fade_ = 0;
  bool isPlaying_ = false;
};

}  // namespace vembrix
