#pragma once

#include <QLineEdit>
#include <functional>

#include "platform/SpaceRowView.h"

namespace vembrix {

/// The field in which a row's name is edited: with the system's text background
/// and a focus ring that its parent draws. Main thread.
class RowEditField : public QLineEdit {
 public:
  using KeyFilter = std::function<KeyHandling(RowKey)>;

  /// `filter` is asked first at every key press that no input method took, and
  /// may hide the field.
  RowEditField(KeyFilter filter, QWidget* parent);

 protected:
  bool event(QEvent* event) override;
  /// The focus stays: Tab, too, is a key press like any other.
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  KeyFilter filter_;
};

}  // namespace vembrix
