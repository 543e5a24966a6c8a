#pragma once

#include <QLineEdit>
#include <functional>

#include "platform/SpaceRowView.h"

namespace vembrix {

/// The edit field of a row's name, with the system's text background and a focus ring that its
/// parent draws. Main thread.
class RowEditField : public QLineEdit {
 public:
  using KeyFilter = std::function<KeyHandling(RowKey)>;

  /// `filter` receives every key press that no input method took before the field does, and may
  /// hide the field.
  RowEditField(KeyFilter filter, QWidget* parent);

 protected:
  bool event(QEvent* event) override;
  /// Tab does not move the focus.
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  KeyFilter filter_;
};

}  // namespace vembrix
