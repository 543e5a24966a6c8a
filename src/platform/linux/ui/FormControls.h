#pragma once

#include <QWidget>

#include "platform/SettingsForm.h"

namespace vembrix {

/// A control of a form as a widget.
struct BuiltControl {
  /// Owned by its parent.
  QWidget* widget = nullptr;
  /// The distance of the first line's baseline from the top, at the natural height.
  int baseline = 0;
};

/// Main thread; needs a Qt application.
BuiltControl buildControl(const FormControl& control, QWidget* parent);

/// Creates the label of a row.
BuiltControl buildLabel(const std::string& text, const TextStyle& style, QWidget* parent);

}  // namespace vembrix
