#pragma once

#include <QObject>
#include <vector>

#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"

namespace vembrix {

class BareWindow;

/// Shows the panels in the active Space and hides the others. Updates when the active Space
/// changes, and after the event in which panels were moved, so that a panel created in one Space
/// and moved to another never appears in the first. Main thread; needs a Qt application.
class PanelStage : public QObject {
 public:
  static PanelStage& shared();

  /// All existing panels.
  [[nodiscard]] const std::vector<BareWindow*>& panels() const { return panels_; }
  void add(BareWindow& panel) { panels_.push_back(&panel); }
  void remove(BareWindow& panel);

  /// Updates after the current event.
  void updateSoon();

  /// To be called when a panel was put in front of all others. Raises those of higher levels
  /// again, and frees the pictures of all but the latest hidden panels.
  void noteShown(BareWindow& panel);

 private:
  PanelStage();
  void update();
  void dropPictures();

  std::vector<BareWindow*> panels_;
  /// The panels shown so far, the latest last.
  std::vector<BareWindow*> shown_;
  Observation observation_;
  WorkItem updating_;
  /// Since the latest update.
  bool isSpaceNew_ = false;
};

}  // namespace vembrix
