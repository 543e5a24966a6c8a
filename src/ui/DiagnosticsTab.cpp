#include "platform/LogTool.h"
#include "ui/DS.h"
#include "ui/FormBuilder.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

PushButton buttonOf(std::string title, std::function<void()> action) {
  return {.title = std::move(title),
          .action = std::move(action),
          .bezel = PushButton::Bezel::Rounded,
          .style = {ds::kControlFont, ds::kTextColor},
          .isEnabled = true,
          .id = {}};
}

}  // namespace

SettingsForm makeDiagnosticsTab(const TabContext& context) {
  FormBuilder form;
  form.header("Reporting a problem");
  form.note(
      "If desktop labels misbehave, send a diagnostic log so the issue can be tracked down. "
      "Reproduce the problem first, then click the button below and paste the result into your "
      "report.");
  PushButton copyLog = buttonOf("Copy Diagnostic Log to Clipboard", context.copyDiagnosticLog);
  copyLog.isEnabled = context.canCopyDiagnosticLog;
  copyLog.id = kCopyDiagnosticLogID;
  form.full(std::move(copyLog));
  form.full(StatusLabel{.text = context.diagnosticsStatus,
                        .style = {ds::kNoteFont, ds::kSecondaryTextColor},
                        .id = kDiagnosticsStatusID});
  form.header("Manual log gathering");
  form.note("Or run this in Terminal and paste the output:");
  form.full(CommandField{.text = LogTool::shared().command().shellText,
                         .style = {ds::kCommandFont, ds::kTextColor},
                         .accessibleName = "Command"});
  form.full(buttonOf("Copy Command", context.copyLogCommand));
  return form.take();
}

}  // namespace vembrix
