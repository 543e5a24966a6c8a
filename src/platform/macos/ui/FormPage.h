#pragma once

#include <string_view>

#import "platform/macos/ui/FormControls.h"

namespace vembrix {

/// A page that is shown: its view, its controls and what they do. The closures of
/// the form are called only as long as the page lives. It may end within one of
/// them: views and targets then last until AppKit is done with the event. Main
/// thread.
class FormPage {
 public:
  explicit FormPage(const SettingsForm& form);
  ~FormPage();

  FormPage(const FormPage&) = delete;
  FormPage& operator=(const FormPage&) = delete;

  /// Laid out by its frame until its user says otherwise.
  [[nodiscard]] NSView* view() const { return view_; }

  /// Whether the page has a status label of that id.
  bool setStatus(NSString* id, std::string_view text);
  void setEnabled(NSString* id, bool isEnabled);

  /// Ends the choosing of a colour, with the panel for it.
  void deactivateWells();

 private:
  FormParts parts_;
  NSView* const view_;
};

}  // namespace vembrix
