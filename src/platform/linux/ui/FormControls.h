#pragma once

#include <QWidget>

#include "platform/SettingsForm.h"

namespace vembrix {

/// A control of a form as a widget.
struct BuiltControl {
  /// Its parent's.
  QWidget* widget = nullptr;
  /// Of its first line, from its top, at its natural height.
  int baseline = 0;
  /// As wide as the form lets it be; otherwise as wide as it needs.
  bool fillsWidth = false;
};

/// Main thread; needs a Qt application.
BuiltControl buildControl(const FormControl& control, QWidget* parent);

/// The label of a row.
BuiltControl buildLabel(const std::string& text, const TextStyle& style, QWidget* parent);

}  // namespace vembrix
