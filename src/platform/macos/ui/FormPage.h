#pragma once

#include <string_view>

#import "platform/macos/ui/FormControls.h"

namespace vembrix {

/// A page with its view, controls and actions. The form's closures are called only while the page
/// lives, and may destroy it: views and targets then last until the current event has ended. Main
/// thread.
class FormPage {
 public:
  explicit FormPage(const SettingsForm& form);
  ~FormPage();

  FormPage(const FormPage&) = delete;
  FormPage& operator=(const FormPage&) = delete;

  /// Laid out by its frame, unless its user changes that.
  [[nodiscard]] NSView* view() const { return view_; }

  /// Sets the text of a status label; returns whether the page has one of that id.
  bool setStatus(NSString* id, std::string_view text);
  void setEnabled(NSString* id, bool isEnabled);

  /// Ends the choice of a colour and closes the colour panel.
  void deactivateWells();

 private:
  FormParts parts_;
  NSView* const view_;
};

}  // namespace vembrix
