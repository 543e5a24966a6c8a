#pragma once

#include <QObject>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"

namespace vembrix {

class FloatingPanel;

/// Decides which of the panels are on the screen: those in the active Space. Looks when
/// the user goes elsewhere, and after the event in which panels were moved, so that what
/// is born in one Space and told to be in another never flashes up in the first. Main
/// thread; needs a Qt application.
class PanelStage : public QObject {
 public:
  static PanelStage& shared();

  /// All that exist.
  [[nodiscard]] const std::vector<FloatingPanel*>& panels() const { return panels_; }
  void add(FloatingPanel& panel) { panels_.push_back(&panel); }
  void remove(FloatingPanel& panel);

  /// Looks after the current event.
  void updateSoon();

  /// The panel has come up, in front of all others: those of higher levels go before it,
  /// and of those out of sight only the latest keep their pictures.
  void noteShown(FloatingPanel& panel);

 private:
  PanelStage();
  void update();
  void dropPictures();

  std::vector<FloatingPanel*> panels_;
  /// Those that have come up, the latest last.
  std::vector<FloatingPanel*> shown_;
  Observation observation_;
  WorkItem updating_;
};

}  // namespace vembrix
