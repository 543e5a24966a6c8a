#pragma once

#include <memory>
#include <string>

#include "platform/SettingsWindow.h"
#include "ui/SettingsTabs.h"

namespace vembrix {

struct AppTheme;
struct DiagnosticLog;

/// Controls the only settings window. Rebuilds its content, in the current theme, whenever it is
/// shown and whenever the user chooses a theme. Main thread; lives as long as the process.
class PreferencesWindowController
    : public std::enable_shared_from_this<PreferencesWindowController> {
 public:
  /// Created on first use, with a hidden window.
  static PreferencesWindowController& shared();

  PreferencesWindowController(const PreferencesWindowController&) = delete;
  PreferencesWindowController& operator=(const PreferencesWindowController&) = delete;

  /// Index of the tab that the next content shows. Kept over rebuilds; set by themed tabs, not by
  /// the plain tab view.
  [[nodiscard]] int selectedTabIndex() const { return selectedTabIndex_; }
  /// Out of range, themed content shows the last tab, plain content the first.
  void setSelectedTabIndex(int index) { selectedTabIndex_ = index; }

  /// Reads the Spaces again and shows the window with new content. Does not activate the
  /// application.
  void showWindow();

  /// Returns the content for the current theme, settings and Spaces.
  [[nodiscard]] SettingsContent buildContent();

  /// Stores the theme and rebuilds the content, on the Theme tab.
  void themeSelected(const std::string& name);
  void themedTabClicked(int index);

  /// Copies the recent log lines to the pasteboard. Returns at once; disables the button until the
  /// status line shows the result. Does nothing while a copy is under way.
  void copyDiagnosticLog();
  /// Copies the command that shows the log to the pasteboard.
  void copyLogCommand();

 private:
  PreferencesWindowController();

  [[nodiscard]] TabContext tabContext();
  [[nodiscard]] PlainContent buildPlainContent();
  [[nodiscard]] ThemedContent buildThemedContent(const AppTheme& theme);
  [[nodiscard]] ThemedPage themedPage(const AppTheme& theme);
  void showContent();
  void diagnosticLogGathered(const DiagnosticLog& log);
  void setDiagnosticsStatus(std::string text);

  std::unique_ptr<SettingsWindow> window_;
  int selectedTabIndex_ = 0;
  /// Whether the window shows themed content.
  bool showsThemedContent_ = false;
  std::string diagnosticsStatus_;
  bool isGathering_ = false;
};

}  // namespace vembrix
