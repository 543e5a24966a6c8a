#pragma once

#include <QAbstractNativeEventFilter>
#include <cstdint>
#include <functional>

namespace vembrix {

/// Ensures that one Vembrix runs per display. The first instance holds an X selection, which the
/// server releases however the program ends; each later one asks it to come forward. Without X11
/// every instance counts as the first. Main thread; needs a Qt application.
class SingleInstance : public QAbstractNativeEventFilter {
 public:
  /// Claims the display. `reopened` is called, from the event loop, whenever another
  /// start has asked for this one. Asks the X server twice and waits.
  explicit SingleInstance(std::function<void()> reopened);
  ~SingleInstance() override;
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  /// Returns whether this is the display's first instance. If not, the first one has been asked to
  /// come forward.
  [[nodiscard]] bool isFirst() const { return isFirst_; }

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  /// Returns whether the claim is settled: false if the owner ended meanwhile.
  [[nodiscard]] bool claim(std::uint32_t selection);
  [[nodiscard]] bool askOwner(std::uint32_t owner) const;

  std::function<void()> reopened_;
  bool isFirst_ = true;
  // Ids of the X server.
  std::uint32_t window_ = 0;
  std::uint32_t reopen_ = 0;
};

}  // namespace vembrix
